// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/session/ApplicationBus.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <sys/eventfd.h>
#include <unistd.h>

#include "platform/linux/session/BusListener.h"
#include "platform/linux/session/Descriptor.h"
#include "platform/linux/session/InstanceSocket.h"
#include "platform/linux/session/SessionBus.h"

namespace vellory {

namespace {

constexpr const char* interfaces = R"(<node>
  <interface name="org.freedesktop.Application">
    <method name="Activate"><arg type="a{sv}" direction="in"/></method>
    <method name="Open"><arg type="as" direction="in"/><arg type="a{sv}" direction="in"/></method>
    <method name="ActivateAction">
      <arg type="s" direction="in"/><arg type="av" direction="in"/><arg type="a{sv}" direction="in"/>
    </method>
  </interface>
  <interface name="com.quorvel.vellory.Links">
    <method name="Open"><arg type="s" direction="in"/></method>
  </interface>
</node>)";

/// The desktop entry's actions, each of which is the host of a link.
constexpr std::array<std::string_view, 4> actions{"open", "toggle", "settings", "time-machine"};

/// The bus gives up on a program that it starts after as long.
constexpr int startMilliseconds = 25'000;

/// The token in the platform data of a call: the newer key first.
std::string tokenIn(GVariant* data) {
    for (const char* key : {"activation-token", "desktop-startup-id"}) {
        const char* token = nullptr;
        if (g_variant_lookup(data, key, "&s", &token) != FALSE && *token != '\0') {
            return token;
        }
    }
    return "";
}

/// What a call asks for; empty when it is none that can be obeyed.
std::vector<LinkRequest> requestsOf(std::string_view method, GVariant* arguments) {
    const glib::Variant first(g_variant_get_child_value(arguments, 0));
    if (method == "Activate") {
        return {{"vellory://open", tokenIn(first.get())}};
    }
    if (g_variant_is_of_type(first.get(), G_VARIANT_TYPE_STRING) != FALSE) {
        const std::string text = g_variant_get_string(first.get(), nullptr);
        if (method == "Open") {
            return {{.link = text}};
        }
        const glib::Variant data(g_variant_get_child_value(arguments, 2));
        if (std::ranges::find(actions, text) == actions.end()) {
            return {};
        }
        return {{"vellory://" + text, tokenIn(data.get())}};
    }
    const glib::Variant data(g_variant_get_child_value(arguments, 1));
    std::vector<LinkRequest> requests;
    for (gsize i = 0; i < g_variant_n_children(first.get()); ++i) {
        const glib::Variant link(g_variant_get_child_value(first.get(), i));
        requests.push_back({g_variant_get_string(link.get(), nullptr), tokenIn(data.get())});
    }
    return requests;
}

/// Answers a call once, from whatever thread.
LinkAnswer answerTo(GDBusMethodInvocation* invocation) {
    const std::shared_ptr<GDBusMethodInvocation> kept(
        G_DBUS_METHOD_INVOCATION(g_object_ref(invocation)), g_object_unref);
    return [kept](bool obeyed) {
        g_object_ref(kept.get()); // Either call takes one away.
        if (obeyed) {
            g_dbus_method_invocation_return_value(kept.get(), nullptr);
        } else {
            g_dbus_method_invocation_return_dbus_error(kept.get(),
                                                       "org.freedesktop.DBus.Error.LimitsExceeded",
                                                       "Too many links are waiting.");
        }
    };
}

} // namespace

class ApplicationBus::Service {
  public:
    Service(const SessionEnvironment& environment, EventLoop& loop, LinkReceiver receiver)
        : receiver_(std::move(receiver)), wake_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
          watch_(loop.watchReadable(wake_.get(), [this] { deliver(); })),
          listener_(environment, {}, [this](GDBusConnection* bus) { serve(bus); }) {}

  private:
    struct Call {
        std::vector<LinkRequest> requests;
        LinkAnswer answer;
    };

    // On the listener's thread.
    void serve(GDBusConnection* bus);
    void hear(const char* method, GVariant* arguments, GDBusMethodInvocation* invocation);

    void deliver();

    LinkReceiver receiver_;
    std::mutex mutex_;
    std::vector<Call> calls_; ///< heard and not delivered
    Descriptor wake_;         ///< readable while there are such
    EventLoop::Handle watch_;
    BusListener listener_; ///< last: it ends before what it writes to
};

ApplicationBus::ApplicationBus(const SessionEnvironment& environment, EventLoop& loop,
                               LinkReceiver receiver)
    : service_(std::make_unique<Service>(environment, loop, std::move(receiver))) {}

ApplicationBus::~ApplicationBus() = default;

void ApplicationBus::Service::serve(GDBusConnection* bus) {
    static constexpr GDBusInterfaceVTable table{
        [](GDBusConnection*, const char*, const char*, const char*, const char* method,
           GVariant* arguments, GDBusMethodInvocation* invocation,
           gpointer self) { static_cast<Service*>(self)->hear(method, arguments, invocation); },
        nullptr,
        nullptr,
        {}};
    const std::unique_ptr<GDBusNodeInfo, glib::Release<g_dbus_node_info_unref>> node(
        g_dbus_node_info_new_for_xml(interfaces, nullptr));
    for (GDBusInterfaceInfo** interface = node->interfaces; *interface != nullptr; ++interface) {
        g_dbus_connection_register_object(bus, path, *interface, &table, this, nullptr, nullptr);
    }
    // The name comes last: from then on the bus hands over what waits.
    constexpr guint32 doNotQueue = 4;
    const glib::Variant answer = glib::own(g_dbus_connection_call_sync(
        bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", name, doNotQueue), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
        nullptr));
}

void ApplicationBus::Service::hear(const char* method, GVariant* arguments,
                                   GDBusMethodInvocation* invocation) {
    std::vector<LinkRequest> requests = requestsOf(method, arguments);
    const bool isBearable = std::ranges::all_of(
        requests, [](const LinkRequest& request) { return isBearableLink(request.link); });
    if (requests.empty() || !isBearable) {
        g_dbus_method_invocation_return_dbus_error(invocation,
                                                   "org.freedesktop.DBus.Error.InvalidArgs",
                                                   "That is no link or action of this program.");
        return;
    }
    LinkAnswer answer = answerTo(invocation);
    g_object_unref(invocation); // The answer has a reference of its own.
    const std::lock_guard lock(mutex_);
    if (calls_.size() >= mostWaiting) {
        answer(false);
        return;
    }
    calls_.push_back({std::move(requests), std::move(answer)});
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(wake_.get(), &one, sizeof one);
}

void ApplicationBus::Service::deliver() {
    std::vector<Call> calls;
    {
        const std::lock_guard lock(mutex_);
        std::uint64_t count = 0;
        [[maybe_unused]] const auto got = ::read(wake_.get(), &count, sizeof count);
        calls = std::exchange(calls_, {});
    }
    for (Call& call : calls) {
        // The last of several links answers for all.
        LinkRequest last = std::move(call.requests.back());
        call.requests.pop_back();
        for (LinkRequest& request : call.requests) {
            receiver_(std::move(request), [](bool) {});
        }
        receiver_(std::move(last), std::move(call.answer));
    }
}

bool ApplicationBus::open(const SessionEnvironment& environment, const LinkRequest& request) {
    const auto bus = sessionBus(environment);
    if (bus == nullptr || !isBearableLink(request.link)) {
        return false;
    }
    GVariantBuilder data;
    g_variant_builder_init(&data, G_VARIANT_TYPE_VARDICT);
    if (!request.activationToken.empty() && isBearableLink(request.activationToken)) {
        g_variant_builder_add(&data, "{sv}", "activation-token",
                              g_variant_new_string(request.activationToken.c_str()));
    }
    const std::array<const char*, 1> links{request.link.c_str()};
    glib::Error error;
    const glib::Variant answer = glib::own(g_dbus_connection_call_sync(
        bus.get(), name, path, "org.freedesktop.Application", "Open",
        g_variant_new("(@as@a{sv})", g_variant_new_strv(links.data(), links.size()),
                      g_variant_builder_end(&data)),
        nullptr, G_DBUS_CALL_FLAGS_NONE, startMilliseconds, nullptr, error.out()));
    return answer != nullptr;
}

} // namespace vellory
