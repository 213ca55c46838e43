// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <string_view>

namespace vellory {

/// Recognises a quick side-to-side shake of the pointer, which summons the launcher.
///
/// Fed with every move of the pointer, so a sample costs a few comparisons and no allocation. A
/// sample that is no number is as if it had not come; time may stand still or run backwards.
class ShakeDetector {
  public:
    /// How hard one has to shake. Stored: append only, never rename.
    enum class Sensitivity { gentle, normal, firm };
    static constexpr std::array allSensitivities{Sensitivity::gentle, Sensitivity::normal,
                                                 Sensitivity::firm};
    static std::string_view rawValue(Sensitivity sensitivity);
    static std::optional<Sensitivity> sensitivity(std::string_view rawValue);

    /// What makes a shake at one sensitivity: so many turns of direction within the window, each
    /// after a stroke of at least this length.
    struct Constants {
        double minimumStroke;  ///< points
        double reversalWindow; ///< seconds
        std::size_t reversals;
    };
    static Constants constants(Sensitivity sensitivity);

    explicit ShakeDetector(Sensitivity sensitivity) : constants_(constants(sensitivity)) {}

    /// Whether this sample completes a shake, which it does at most once in a second. `time` is in
    /// seconds on any clock; `y` does not count.
    bool feed(double x, double y, double time);

  private:
    bool reverse(double time);
    void dropReversalsOutside(double window, double time);

    /// Of the reversals only the latest count, as many as the firmest shake needs.
    static constexpr std::size_t mostReversals = 5;

    Constants constants_;
    std::optional<double> lastX_;
    int direction_ = 0;        ///< -1 to the left, +1 to the right, 0 before the first move
    double travel_ = 0;        ///< points moved in the current direction
    double counterTravel_ = 0; ///< points moved against it since it last changed
    std::array<double, mostReversals> reversals_{};
    std::size_t reversalCount_ = 0;
    double lastShake_ = -std::numeric_limits<double>::infinity();
};

} // namespace vellory
