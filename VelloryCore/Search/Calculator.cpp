// SPDX-License-Identifier: Apache-2.0
#include "Search/Calculator.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numbers>
#include <system_error>

#include <unicode/numberformatter.h>
#include <unicode/unistr.h>

namespace vellory::Calculator {

namespace {

struct Constant {
    std::string_view name;
    double value;
};

constexpr std::array constants{Constant{"pi", std::numbers::pi}, Constant{"e", std::numbers::e}};

struct Function {
    std::string_view name;
    double (*apply)(double);
};

constexpr std::array functions{
    Function{"sqrt", [](double x) { return std::sqrt(x); }},
    Function{"sin", [](double x) { return std::sin(x); }},
    Function{"cos", [](double x) { return std::cos(x); }},
    Function{"tan", [](double x) { return std::tan(x); }},
    Function{"log", [](double x) { return std::log10(x); }},
    Function{"ln", [](double x) { return std::log(x); }},
    Function{"abs", [](double x) { return std::fabs(x); }},
    Function{"round", [](double x) { return std::round(x); }}, // halves away from zero
};

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool isLetter(char c) {
    return c >= 'a' && c <= 'z';
}

/// The number that a run of digits and points spells. One too large is infinite, one too small is
/// zero, as in C.
std::optional<double> number(std::string_view run) {
    double value = 0;
    const auto [end, error] = std::from_chars(run.data(), run.data() + run.size(), value);
    if (error == std::errc::invalid_argument || end != run.data() + run.size()) {
        return std::nullopt;
    }
    if (error == std::errc::result_out_of_range) {
        const std::string_view whole = run.substr(0, run.find('.'));
        const bool large = whole.find_first_not_of('0') != std::string_view::npos;
        return large ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return value;
}

/// Recursive descent over the prepared text: lower-case, no spaces. Each operation reads what it is
/// named after from the current position on and gives its value, or nothing.
class Parser {
  public:
    explicit Parser(std::string_view text) : text_(text) {}

    std::optional<double> expression() {
        auto left = term();
        while (left && (at('+') || at('-'))) {
            const char operation = take();
            const auto right = term();
            if (!right) {
                return std::nullopt;
            }
            *left = operation == '+' ? *left + *right : *left - *right;
        }
        return left;
    }

    bool isAtEnd() const { return position_ == text_.size(); }

  private:
    /// Holds one level of nesting for as long as it lives.
    class Level {
      public:
        explicit Level(int& depth) : depth_(depth) { ++depth_; }
        ~Level() { --depth_; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;
        bool isTooDeep() const { return depth_ > maxDepth; }

      private:
        /// Far beyond any sum that is typed, and far within the stack.
        static constexpr int maxDepth = 256;
        int& depth_;
    };

    std::optional<double> term() {
        auto left = unary();
        while (left && (at('*') || at('/') || at('%'))) {
            const char operation = take();
            const auto right = unary();
            if (!right || (operation == '/' && *right == 0)) {
                return std::nullopt;
            }
            *left = operation == '*'   ? *left * *right
                    : operation == '/' ? *left / *right
                                       : std::fmod(*left, *right);
        }
        return left;
    }

    std::optional<double> unary() {
        const Level level(depth_);
        if (level.isTooDeep()) {
            return std::nullopt;
        }
        if (!at('-') && !at('+')) {
            return power();
        }
        const char sign = take();
        const auto value = unary();
        return value && sign == '-' ? std::optional(-*value) : value;
    }

    std::optional<double> power() {
        const auto base = primary();
        if (!base || !at('^')) {
            return base;
        }
        take();
        const auto exponent = unary();
        return exponent ? std::optional(std::pow(*base, *exponent)) : std::nullopt;
    }

    std::optional<double> primary() {
        const Level level(depth_);
        if (level.isTooDeep()) {
            return std::nullopt;
        }
        if (at('(')) {
            take();
            const auto inner = expression();
            if (!inner || !at(')')) {
                return std::nullopt;
            }
            take();
            return inner;
        }
        const std::string_view name = run(isLetter);
        if (name.empty()) {
            return number(run([](char c) { return isDigit(c) || c == '.'; }));
        }
        const auto* constant = std::ranges::find(constants, name, &Constant::name);
        if (constant != constants.end()) {
            return constant->value;
        }
        const auto* function = std::ranges::find(functions, name, &Function::name);
        if (function == functions.end()) {
            return std::nullopt;
        }
        const auto argument = primary();
        return argument ? std::optional(function->apply(*argument)) : std::nullopt;
    }

    bool at(char c) const { return !isAtEnd() && text_[position_] == c; }

    char take() { return text_[position_++]; }

    template <class Belongs>
    std::string_view run(Belongs belongs) {
        const std::size_t begin = position_;
        while (!isAtEnd() && belongs(text_[position_])) {
            ++position_;
        }
        return text_.substr(begin, position_ - begin);
    }

    std::string_view text_;
    std::size_t position_ = 0;
    int depth_ = 0;
};

/// `text` in the form the parser reads, or nothing where a character can be part of no sum: beyond
/// ASCII there are only the signs × and ÷.
std::optional<std::string> prepared(std::string_view text) {
    constexpr std::string_view times = "×";
    constexpr std::string_view dividedBy = "÷";
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == ',' || c == ' ' || c == '=') {
            continue;
        }
        if (c >= 'A' && c <= 'Z') {
            out.push_back(static_cast<char>(c + ('a' - 'A')));
        } else if (isLetter(c) || isDigit(c) || (c >= '(' && c <= '/') || c == '^' || c == '%') {
            out.push_back(c); // from "(" to "/" stand ( ) * + , - . /
        } else if (text.substr(i).starts_with(times) || text.substr(i).starts_with(dividedBy)) {
            out.push_back(text.substr(i).starts_with(times) ? '*' : '/');
            ++i;
        } else {
            return std::nullopt;
        }
    }
    return out;
}

/// Whether a text of the right characters means a sum: it has an operator, or names a root or pi. A
/// bare number, such as a year, does not.
bool meansSum(std::string_view text) {
    return text.find_first_of("+-*/^%(") != std::string_view::npos ||
           text.find("sqrt") != std::string_view::npos || text.find("pi") != std::string_view::npos;
}

template <class... Format>
std::string plainText(double value, Format... format) {
    std::array<char, 64> buffer{};
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format...);
    return {buffer.data(), result.ptr};
}

} // namespace

std::optional<double> evaluate(std::string_view text) {
    const auto sum = prepared(text);
    if (!sum || !meansSum(*sum)) {
        return std::nullopt;
    }
    Parser parser(*sum);
    const auto value = parser.expression();
    return value && parser.isAtEnd() && std::isfinite(*value) ? value : std::nullopt;
}

std::string format(double value, std::string_view locale) {
    const double size = std::fabs(value);
    if (size >= 1e15 || (value != 0 && size < 1e-6)) {
        return plainText(value, std::chars_format::general, 6);
    }
    UErrorCode status = U_ZERO_ERROR;
    const auto number = icu::number::NumberFormatter::withLocale(
                            icu::Locale::createCanonical(std::string(locale).c_str()))
                            .precision(icu::number::Precision::maxFraction(10))
                            .formatDouble(value == 0 ? 0.0 : value, status); // a zero shows no sign
    std::string out;
    number.toString(status).toUTF8String(out);
    return U_SUCCESS(status) && !out.empty() ? out : plainText(value);
}

} // namespace vellory::Calculator
