// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include <gio/gio.h>

/// Owners for what GLib hands out.
namespace vellory::glib {

template <auto release>
struct Release {
    template <class T>
    void operator()(T* pointer) const {
        release(pointer);
    }
};

template <class T>
using Object = std::unique_ptr<T, Release<g_object_unref>>;
using Chars = std::unique_ptr<char, Release<g_free>>;
using Strings = std::unique_ptr<char*, Release<g_strfreev>>;
using KeyFile = std::unique_ptr<GKeyFile, Release<g_key_file_unref>>;
using Variant = std::unique_ptr<GVariant, Release<g_variant_unref>>;
using MainContext = std::unique_ptr<GMainContext, Release<g_main_context_unref>>;
using MainLoop = std::unique_ptr<GMainLoop, Release<g_main_loop_unref>>;

/// Takes the reference of a variant that may still be floating.
inline Variant own(GVariant* variant) {
    return Variant(variant == nullptr ? nullptr : g_variant_take_ref(variant));
}

/// The out parameter of a call that can fail: `call(..., error.out())`.
class Error {
  public:
    Error() = default;
    Error(const Error&) = delete;
    Error& operator=(const Error&) = delete;
    ~Error() { g_clear_error(&error_); }

    GError** out() {
        g_clear_error(&error_);
        return &error_;
    }
    const GError* get() const { return error_; }
    explicit operator bool() const { return error_ != nullptr; }
    std::string message() const { return error_ == nullptr ? "" : error_->message; }

  private:
    GError* error_ = nullptr;
};

/// The text of a C string that may be null.
inline std::string text(const char* chars) {
    return chars == nullptr ? std::string() : std::string(chars);
}

} // namespace vellory::glib
