// SPDX-License-Identifier: Apache-2.0
#include "model/CommandLineTool.h"

#include <algorithm>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "Support/Link.h"
#include "Support/Text.h"
#include "support/Child.h"
#include "support/HostileTexts.h"
#include "support/TemporaryFolder.h"

namespace vellory::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

using Words = std::vector<std::string>;

constexpr std::string_view usage =
    "usage: vellory [open|toggle|close|settings|search <text>|ask <text>|workspace <name>|focus "
    "<name> [minutes]|layout <name>|time-machine|workspaces]\n";

/// A terminal whose path holds nothing but an opener that notes what it is told to open, the tools
/// that every POSIX system has, and a program that nobody is meant to run.
class Terminal {
  public:
    struct Result {
        int status = -1;
        std::string output;
    };

    Terminal() : tool_(folder_.path()) {
        EXPECT_EQ(tool_.install(),
                  Notice::confirmation("Installed ~/.local/bin/vellory", "terminal"));
        makeProgram("xdg-open", "printf '%s\\n' \"$#\" \"$1\" >> '" + log().string() + "'");
        makeProgram(std::string(canary), "echo ran >> '" + log().string() + "'");
        for (const std::string name : {"awk", "od"}) {
            fs::create_symlink("/usr/bin/" + name, folder_.path() / "path" / name);
        }
        withoutPython_ =
            folder_.write("without-python", Text::replacingAll(CommandLineTool::script(),
                                                               "/usr/bin/python3", "/nonexistent"));
    }

    const TemporaryFolder& folder() const { return folder_; }
    const fs::path& script() const { return tool_.file(); }
    /// The same script on a machine that has no Python.
    const fs::path& withoutPython() const { return withoutPython_; }

    Result run(const std::string& shell, const fs::path& script, const Words& words) const {
        const fs::path output = folder_.path() / "output";
        const int out = ::open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        Words command{shell, script.string()};
        command.insert(command.end(), words.begin(), words.end());
        const int status =
            endOf(spawn(command, {.output = out,
                                  .error = nowhere,
                                  .environment = {"PATH=" + (folder_.path() / "path").string(),
                                                  "HOME=" + folder_.path().string()},
                                  .folder = folder_.path()}));
        ::close(out);
        ::close(nowhere);
        return {status, contentOf(output)};
    }

    /// What the opener was given since the last call: the number of its arguments and the first, or
    /// "ran" of the program that must not run.
    std::string takeOpened() const {
        std::string opened = contentOf(log());
        fs::remove(log());
        return opened;
    }

    void makeProgram(const std::string& name, const std::string& body) const {
        const fs::path file = folder_.write("path/" + name, "#!/bin/sh\n" + body + "\n");
        fs::permissions(file, fs::perms::owner_all);
    }

  private:
    fs::path log() const { return folder_.path() / "opened"; }

    TemporaryFolder folder_;
    CommandLineTool tool_;
    fs::path withoutPython_;
};

std::string opened(const std::string& link) {
    return "1\n" + link + "\n";
}

TEST(CommandLineTool, InstallsAProgramOfItsOwnAtomicallyAndSaysSo) {
    const TemporaryFolder folder;
    const CommandLineTool tool(folder.path());
    EXPECT_FALSE(tool.isInstalled());
    // A link to some program, which must survive.
    const fs::path other = folder.write("other", "not ours");
    fs::create_directories(tool.file().parent_path());
    fs::create_symlink(other, tool.file());
    EXPECT_EQ(tool.install().text, "Installed ~/.local/bin/vellory");
    EXPECT_TRUE(tool.isInstalled());
    EXPECT_EQ(tool.file(), folder.path() / ".local/bin/vellory");
    EXPECT_EQ(contentOf(other), "not ours");
    EXPECT_EQ(contentOf(tool.file()), CommandLineTool::script());
    EXPECT_EQ(fs::symlink_status(tool.file()).permissions(), static_cast<fs::perms>(0755));

    // Again, over one that was made unfit to run.
    fs::permissions(tool.file(), static_cast<fs::perms>(0600));
    EXPECT_EQ(tool.install(), Notice::confirmation("Installed ~/.local/bin/vellory", "terminal"));
    EXPECT_EQ(fs::status(tool.file()).permissions(), static_cast<fs::perms>(0755));
    EXPECT_THAT(namesIn(tool.file().parent_path()), ElementsAre("vellory"));

    // What stands in the way is left alone.
    folder.write("a/.local", "a file where a folder should be");
    fs::create_directories(folder.path() / "b/.local/bin/vellory/inside");
    for (const char* home : {"a", "b"}) {
        EXPECT_EQ(CommandLineTool(folder.path() / home).install(),
                  Notice::error("Couldn't install the command"));
    }
    EXPECT_TRUE(fs::exists(folder.path() / "b/.local/bin/vellory/inside"));
    EXPECT_THAT(namesIn(folder.path() / "b/.local/bin"), ElementsAre("vellory"));
}

TEST(CommandLineTool, EachCommandOpensItsLinkInEveryShellWithAndWithoutPython) {
    const Terminal terminal;
    const std::vector<std::pair<Words, std::string>> cases{
        {{}, "open"},
        {{"open"}, "open"},
        {{"show"}, "open"},
        {{"toggle"}, "toggle"},
        {{"close"}, "close"},
        {{"settings"}, "settings"},
        {{"search", "two  spaces", "and", "ö/?&=+"},
         "search?q=two%20%20spaces%20and%20%C3%B6%2F%3F%26%3D%2B"},
        {{"workspace", "Deep", "Work"}, "workspace/Deep%20Work"},
        {{"ws", "a/b"}, "workspace/a%2Fb"},
        {{"focus", "Writing"}, "focus-session/Writing?minutes=25"},
        {{"focus", "Deep Work", "50"}, "focus-session/Deep%20Work?minutes=50"},
        {{"focus", "Deep", "Work", "50"}, "focus-session/Deep?minutes=Work"},
        {{"focus", "A", "5&q=$(pwned)\n"}, "focus-session/A?minutes=5%26q%3D%24%28pwned%29%0A"},
        {{"layout", "My", "layout"}, "layout/My%20layout"},
        {{"ask", "what's open?"}, "ask?q=what%27s%20open%3F"},
        {{"time-machine"}, "time-machine"},
        {{"tm"}, "time-machine"},
    };
    for (const std::string shell : {"/bin/dash", "/bin/bash"}) {
        for (const fs::path& script : {terminal.script(), terminal.withoutPython()}) {
            for (const auto& [words, link] : cases) {
                EXPECT_EQ(terminal.run(shell, script, words).status, 0) << shell << link;
                EXPECT_EQ(terminal.takeOpened(), opened("vellory://" + link)) << shell << script;
            }
            for (const std::string word : {"bogus", "", "Open", "--help", "-n", "search",
                                           "workspace", "ws", "focus", "layout", "ask"}) {
                const Terminal::Result result = terminal.run(shell, script, {word});
                EXPECT_EQ(result.status, 2) << word;
                EXPECT_EQ(result.output, usage);
            }
            EXPECT_EQ(terminal.takeOpened(), "");
        }
    }
}

TEST(CommandLineTool, AnyWordsArriveAsTheyAreAndNoneIsEverRun) {
    const Terminal terminal;
    const std::vector<std::string> texts = hostileTexts();
    ASSERT_GE(texts.size(), 300U);
    // In the way of whoever looks for modules where it was started.
    terminal.folder().write("urllib/__init__.py", "import os\nos.system('pwned')\n");
    int turn = 0;
    for (const std::string& text : texts) {
        // Every text without Python, some with it, which takes longer.
        constexpr int turnsOfPython = 16;
        const bool python = ++turn % turnsOfPython == 0;
        terminal.run(turn % 2 == 0 ? "/bin/dash" : "/bin/bash",
                     python ? terminal.script() : terminal.withoutPython(), {"search", text});
        EXPECT_EQ(terminal.takeOpened(), opened("vellory://search?q=" + Link::encoded(text)));
    }
    for (std::size_t i = 0; i < texts.size(); i += 4) {
        EXPECT_EQ(terminal.run("/bin/dash", terminal.script(), {texts[i], texts[i]}).status, 2)
            << texts[i];
    }
    EXPECT_EQ(terminal.takeOpened(), "");
    EXPECT_THAT(namesIn(terminal.folder().path()),
                ElementsAre(".local", "output", "path", "urllib", "without-python"));
}

TEST(CommandLineTool, WhatIsTooLongOrFindsNoOpenerIsSaidInsteadOfOpened) {
    const Terminal terminal;
    const std::string most(65'536 - std::string("vellory://search?q=").size(), 'x');
    EXPECT_EQ(terminal.run("/bin/dash", terminal.script(), {"search", most}).status, 0);
    EXPECT_EQ(terminal.takeOpened(), opened("vellory://search?q=" + most));
    EXPECT_EQ(terminal.run("/bin/dash", terminal.script(), {"search", most + "x"}).status, 1);
    EXPECT_EQ(terminal.takeOpened(), "");
    // Openers are tried in turn; some say that they failed and end as if they had not.
    terminal.makeProgram("gio", "echo failed >&2; exit 0");
    EXPECT_EQ(terminal.run("/bin/dash", terminal.script(), {"toggle"}).status, 0);
    EXPECT_EQ(terminal.takeOpened(), opened("vellory://toggle"));
    terminal.makeProgram("gio", "exit 0");
    EXPECT_EQ(terminal.run("/bin/dash", terminal.script(), {"toggle"}).status, 0);
    EXPECT_EQ(terminal.takeOpened(), "");
    fs::remove(terminal.folder().path() / "path/gio");
    fs::remove(terminal.folder().path() / "path/xdg-open");
    EXPECT_EQ(terminal.run("/bin/dash", terminal.script(), {"toggle"}).status, 1);
}

TEST(CommandLineTool, PrintsTheNamesOfWorkspacesAndNothingElseOfTheFile) {
    const Terminal terminal;
    const std::vector<std::pair<std::string, std::string>> cases{
        {"[]", ""},
        {R"([{"id":"1","name":"Writing","items":[{"name":"inner"}]},{"name":"Deep Work"}])",
         "Writing\nDeep Work\n"},
        {"[\n  {\n    \"n\\u0061me\" : \"\\u0041\\\"b\\\\\\/c\"\n  }\n]\n", "A\"b\\/c\n"},
        {R"([{"name":"\u00f6 \ud83d\ude00 \ud83d x"},{"name":"ö"}])", "ö 😀 ? x\nö\n"},
        {R"([{"name":"two\nlines\u001b[2J"},{"name":""}])", "two lines [2J\n\n"},
        {R"([{"symbol":"name","name":"{[\"name\":"},{"x":{"name":"deep"},"name":"]}"}])",
         "{[\"name\":\n]}\n"},
        {R"([{"name":5,"symbol":"s"},{"name":null},{"name":["no"]},{"name":{"name":"no"}}])", ""},
        {"", ""},
        {"not JSON", ""},
        {R"({"name":"no list"})", ""},
    };
    for (const auto& [file, names] : cases) {
        terminal.folder().write(".local/share/vellory/workspaces.json", file);
        for (const std::string shell : {"/bin/dash", "/bin/bash"}) {
            const Terminal::Result result = terminal.run(shell, terminal.script(), {"workspaces"});
            EXPECT_EQ(result.output, names) << file;
            EXPECT_EQ(result.status, 0);
        }
    }
    fs::remove(terminal.folder().path() / ".local/share/vellory/workspaces.json");
    EXPECT_EQ(terminal.run("/bin/dash", terminal.script(), {"workspaces"}).output, "");
}

} // namespace
} // namespace vellory::test
