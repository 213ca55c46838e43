// SPDX-License-Identifier: Apache-2.0
#include "Input/VoiceCommand.h"

#include <ostream>

#include <gtest/gtest.h>

namespace vellory::input_tests {

void PrintTo(const VoiceCommand& command, std::ostream* out) {
    static constexpr const char* names[] = {"open ", "workspace ", "search ", "show the grid",
                                            "close the workspace"};
    *out << names[command.content.index()];
    if (const auto* open = std::get_if<VoiceCommand::Open>(&command.content)) {
        *out << '"' << open->name << '"';
    } else if (const auto* workspace = std::get_if<VoiceCommand::Workspace>(&command.content)) {
        *out << '"' << workspace->name << '"';
    } else if (const auto* search = std::get_if<VoiceCommand::Search>(&command.content)) {
        *out << '"' << search->query << '"';
    }
}

namespace {

using V = VoiceCommand;

struct Case {
    const char* transcript;
    std::optional<VoiceCommand> command;
};

void expectAll(std::initializer_list<Case> cases) {
    for (const Case& c : cases) {
        EXPECT_EQ(V::parse(c.transcript), c.command) << '"' << c.transcript << '"';
    }
}

TEST(VoiceCommand, WakeWordPoliteSpeechCaseAndPunctuationDoNotCount) {
    expectAll({
        {"Hey Vellory, open Safari.", V{V::Open{"safari"}}},
        {"VELLORY! please; launch \"Safari\"?", V{V::Open{"safari"}}},
        {"hey vel-lory: open safari", V{V::Open{"safari"}}},
        {"vel lory open safari", V{V::Open{"safari"}}},
        {"hey velory open safari", V{V::Open{"safari"}}},
        {"  open \t the\nmaps  ", V{V::Open{"maps"}}},
        {"Öffne das Wörterbuch", V{V::Open{"öffne das wörterbuch"}}},
        {"ÖFFNE", V{V::Open{"öffne"}}},
        // "please" comes after the wake word, and once.
        {"please show my apps", V{V::ShowGrid{}}},
        {"please vellory open safari", V{V::Open{"vellory open safari"}}},
        {"please please open safari", V{V::Open{"please open safari"}}},
    });
}

TEST(VoiceCommand, NothingButTheWakeWordIsNothing) {
    expectAll({
        {"", std::nullopt},
        {" .,!?;:\" ", std::nullopt},
        {"Vellory", std::nullopt},
        {"Hey, Vellory!", std::nullopt},
        {"hey", V{V::Open{"hey"}}},
        {"please", V{V::Open{"please"}}},
        {"hey vellory please", V{V::Open{"please"}}},
    });
}

TEST(VoiceCommand, WholeTextShowsTheGridOrClosesTheWorkspace) {
    for (const std::string_view phrase : V::phrases().showGrid) {
        EXPECT_EQ(V::parse(phrase), V{V::ShowGrid{}}) << phrase;
        EXPECT_EQ(V::parse("hey vellory please " + std::string(phrase) + "!"), V{V::ShowGrid{}});
    }
    for (const std::string_view phrase : V::phrases().closeWorkspace) {
        EXPECT_EQ(V::parse(phrase), V{V::CloseWorkspace{}}) << phrase;
    }
    expectAll({
        {"close this workspace!", V{V::CloseWorkspace{}}},
        {"open vellory", V{V::ShowGrid{}}},
        {"show the grid now", V{V::Open{"show the grid now"}}},
        {"open the grids", V{V::Open{"grids"}}},
        {"close safari", V{V::Open{"close safari"}}},
    });
}

TEST(VoiceCommand, SearchTakesTheRestAndTheFirstPrefixDecides) {
    expectAll({
        {"search for my photos", V{V::Search{"my photos"}}},
        {"search forms", V{V::Search{"forms"}}},
        {"find the app", V{V::Search{"the app"}}},
        {"look for writing workspace", V{V::Search{"writing workspace"}}},
        {"search for", V{V::Open{"search for"}}},
        {"find", V{V::Open{"find"}}},
        {"search search", V{V::Search{"search"}}},
    });
}

TEST(VoiceCommand, OpenDropsArticlesAndTheWordApp) {
    expectAll({
        {"open the notes app", V{V::Open{"notes"}}},
        {"switch to my calendar", V{V::Open{"calendar"}}},
        {"go to mail", V{V::Open{"mail"}}},
        {"start the my day app", V{V::Open{"my day"}}}, // one article
        {"run app", V{V::Open{"app"}}},
        {"open whatsapp", V{V::Open{"whatsapp"}}},
        {"open app store", V{V::Open{"app store"}}},
        {"open the", V{V::Open{"the"}}},
        {"launch", V{V::Open{"launch"}}},
        {"open theatre", V{V::Open{"theatre"}}},
        {"notes app", V{V::Open{"notes app"}}}, // without a prefix it is all a name
    });
}

TEST(VoiceCommand, WorkspaceIsNamedByTheOtherWords) {
    expectAll({
        {"open my writing workspace", V{V::Workspace{"writing"}}},
        {"switch to workspace deep work", V{V::Workspace{"deep work"}}},
        {"start the client workspace call", V{V::Workspace{"client call"}}},
        {"open my writing app workspace", V{V::Workspace{"writing app"}}},
        {"open workspace", V{V::Open{"workspace"}}},
        {"open the workspace", V{V::Open{"workspace"}}},
        {"open workspaces", V{V::Open{"workspaces"}}},
        {"open workspace workspace", V{V::Open{"workspace workspace"}}},
        {"writing workspace", V{V::Open{"writing workspace"}}},
    });
}

TEST(VoiceCommand, PhrasesMatchWholeWords) {
    expectAll({
        {"finder", V{V::Open{"finder"}}},
        {"open finder", V{V::Open{"finder"}}},
        {"searchlight", V{V::Open{"searchlight"}}},
        {"runner", V{V::Open{"runner"}}},
        {"startup disk", V{V::Open{"startup disk"}}},
        {"open-source browser", V{V::Open{"open-source browser"}}},
        {"velloryish", V{V::Open{"velloryish"}}},
        {"heyday", V{V::Open{"heyday"}}},
        {"pleaser", V{V::Open{"pleaser"}}},
        {"go together", V{V::Open{"go together"}}},
    });
}

TEST(VoiceCommand, LongAndBrokenTextIsTakenAsItIs) {
    const std::string longName(1'000'000, 'x');
    EXPECT_EQ(V::parse("open " + longName), V{V::Open{longName}});
    std::string workspaces = "open";
    for (int i = 0; i < 100'000; ++i) {
        workspaces += " workspace";
    }
    EXPECT_EQ(V::parse(workspaces + " x"), V{V::Workspace{"x"}});
    EXPECT_TRUE(V::parse("open \xff\xfe"));
    EXPECT_TRUE(V::parse(std::string_view("open\0x", 6)));
}

} // namespace
} // namespace vellory::input_tests
