// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/apps/SystemdUnits.h"

#include <cstdint>
#include <string_view>
#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

namespace vellory {

namespace {

constexpr const char* systemdName = "org.freedesktop.systemd1";
constexpr const char* systemdPath = "/org/freedesktop/systemd1";
constexpr const char* managerInterface = "org.freedesktop.systemd1.Manager";

/// What waits at most; a desktop that starts more at once loses the rest.
constexpr std::size_t mostEvents = 10'000;

/// Whether somebody started an app: what the session starts by itself at its begin does not count.
bool isOfApp(std::string_view unit) {
    return unit.starts_with("app-") && (unit.ends_with(".scope") || unit.ends_with(".service")) &&
           !unit.contains("@autostart");
}

} // namespace

SystemdUnits::SystemdUnits(const SessionEnvironment& environment, EventLoop& loop,
                           Observer observer)
    : observer_(std::move(observer)), wake_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      watch_(loop.watchReadable(wake_, [this] { deliver(); })) {
    const auto signal = [this](const char* member, Change change) {
        return BusListener::Signal{
            systemdName, systemdPath, managerInterface, member,
            [this, change](const char*, GVariant* unit) { hear(unit, change); }};
    };
    // Without a subscriber systemd says nothing. No answer is waited for.
    const auto subscribe = [](GDBusConnection* bus) {
        g_dbus_connection_call(bus, systemdName, systemdPath, managerInterface, "Subscribe",
                               nullptr, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr,
                               nullptr, nullptr);
    };
    listener_ = std::make_unique<BusListener>(
        environment,
        std::vector{signal("UnitNew", Change::came), signal("UnitRemoved", Change::went)},
        subscribe);
}

SystemdUnits::~SystemdUnits() {
    listener_.reset(); // Nobody writes to the descriptor after this.
    watch_.reset();
    ::close(wake_);
}

void SystemdUnits::hear(GVariant* arguments, Change change) {
    if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(so)")) == FALSE) {
        return;
    }
    const char* unit = nullptr;
    g_variant_get(arguments, "(&s&o)", &unit, nullptr);
    if (!isOfApp(unit)) {
        return;
    }
    const std::lock_guard lock(mutex_);
    if (events_.size() < mostEvents) {
        events_.push_back({unit, change});
    }
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(wake_, &one, sizeof one);
}

void SystemdUnits::deliver() {
    std::vector<Event> events;
    {
        const std::lock_guard lock(mutex_);
        std::uint64_t count = 0;
        [[maybe_unused]] const auto got = ::read(wake_, &count, sizeof count);
        events = std::exchange(events_, {});
    }
    for (const Event& event : events) {
        observer_(event.unit, event.change);
    }
}

} // namespace vellory
