// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Sums typed into the search field. Words are turned away before anything is parsed, so that
/// typing an app's name never shows a number.
namespace vellory::Calculator {

/// The value of a sum such as "12×7", "2^3^2" or "sqrt(2)*pi"; nothing for what is no sum: a word,
/// a bare number, a formula with a mistake, a division by zero, a value that is not finite.
///
/// "%" is the remainder of a division, "^" groups to the right and binds tighter than a sign before
/// it, angles are radians, "log" has base ten. Commas and spaces are passed over: a comma never is
/// a decimal point. Linear in the text; what nests deeper than anyone types is no sum.
std::optional<double> evaluate(std::string_view text);

/// `value` as people write it in a locale such as "en_US": grouped, with at most ten digits after
/// the decimal point; with six digits and a power of ten ("1e+15") from 1e15 up and below 1e-6.
std::string format(double value, std::string_view locale);

} // namespace vellory::Calculator
