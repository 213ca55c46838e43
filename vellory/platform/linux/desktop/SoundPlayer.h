// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <mutex>
#include <string>

struct ca_context;

namespace vellory {

/// Plays the sounds of the desktop's sound theme. Without a sound system it is silent. Any thread;
/// a call may wait for the sound system, not for the end of the sound.
class SoundPlayer {
  public:
    void play(const std::string& name);

    /// The event of the freedesktop sound naming that stands for a system sound of macOS.
    static std::string eventFor(const std::string& name);

  private:
    struct Destroy {
        void operator()(ca_context* context) const;
    };

    std::mutex mutex_;
    std::unique_ptr<ca_context, Destroy> context_; ///< sounds end with it
};

} // namespace vellory
