// SPDX-License-Identifier: Apache-2.0
#include "Input/VoiceCommand.h"

#include <gtest/gtest.h>

#include "support/Lists.h"

namespace vellory::input_tests {
namespace {

/// What is understood: "nothing", "grid" or "close", or a verb and a name such as "open safari".
std::string understood(std::string_view transcript) {
    struct Teller {
        std::string operator()(const VoiceCommand::Open& open) { return "open " + open.name; }
        std::string operator()(const VoiceCommand::Workspace& workspace) {
            return "workspace " + workspace.name;
        }
        std::string operator()(const VoiceCommand::Search& search) {
            return "search " + search.query;
        }
        std::string operator()(const VoiceCommand::ShowGrid&) { return "grid"; }
        std::string operator()(const VoiceCommand::CloseWorkspace&) { return "close"; }
    };
    const auto command = VoiceCommand::parse(transcript);
    return command ? std::visit(Teller{}, command->content) : "nothing";
}

void expectAll(std::initializer_list<std::pair<const char*, const char*>> cases) {
    for (const auto& [transcript, command] : cases) {
        EXPECT_EQ(understood(transcript), command) << '"' << transcript << '"';
    }
}

TEST(VoiceCommand, WakeWordPoliteSpeechCaseAndPunctuationDoNotCount) {
    expectAll({
        {"Hey Vellory, open Safari.", "open safari"},
        {"VELLORY! please; launch \"Safari\"?", "open safari"},
        {"hey vel-lory: open safari", "open safari"},
        {"vel lory open safari", "open safari"},
        {"hey velory open safari", "open safari"},
        {"  open \t the\nmaps  ", "open maps"},
        {"Öffne das Wörterbuch", "open öffne das wörterbuch"},
        // "please" comes after the wake word, and once.
        {"please vellory open safari", "open vellory open safari"},
        {"please please open safari", "open please open safari"},
        // Nothing but the wake word is nothing.
        {"", "nothing"},
        {" .,!?;:\" ", "nothing"},
        {"Hey, Vellory!", "nothing"},
        {"hey", "open hey"},
        {"hey vellory please", "open please"},
    });
}

TEST(VoiceCommand, WholeTextShowsTheGridOrClosesTheWorkspace) {
    for (const std::string_view phrase : VoiceCommand::phrases().showGrid) {
        EXPECT_EQ(understood("hey vellory please " + std::string(phrase) + "!"), "grid");
    }
    for (const std::string_view phrase : VoiceCommand::phrases().closeWorkspace) {
        EXPECT_EQ(understood(phrase), "close") << phrase;
    }
    expectAll({
        {"please show my apps", "grid"},
        {"open vellory", "grid"},
        {"close this workspace!", "close"},
        {"show the grid now", "open show the grid now"},
        {"open the grids", "open grids"},
        {"close safari", "open close safari"},
    });
}

TEST(VoiceCommand, TheFirstPrefixOfWholeWordsDecides) {
    expectAll({
        {"search for my photos", "search my photos"},
        {"search forms", "search forms"},
        {"look for writing workspace", "search writing workspace"},
        {"search for", "open search for"},
        {"search search", "search search"},
        {"find the app", "search the app"},
        {"find", "open find"},
        {"finder", "open finder"},
        {"runner", "open runner"},
        {"open-source browser", "open open-source browser"},
        {"velloryish", "open velloryish"},
        {"heyday", "open heyday"},
        {"pleaser", "open pleaser"},
        {"go together", "open go together"},
    });
}

TEST(VoiceCommand, OpenDropsArticlesAndTheWordAppAndKnowsWorkspaces) {
    expectAll({
        {"open the notes app", "open notes"},
        {"switch to my calendar", "open calendar"},
        {"go to mail", "open mail"},
        {"start the my day app", "open my day"}, // one article
        {"run app", "open app"},
        {"open whatsapp", "open whatsapp"},
        {"open app store", "open app store"},
        {"open the", "open the"},
        {"launch", "open launch"},
        {"open theatre", "open theatre"},
        {"notes app", "open notes app"}, // without a prefix it is all a name
        // A workspace is named by the other words.
        {"open my writing workspace", "workspace writing"},
        {"switch to workspace deep work", "workspace deep work"},
        {"start the client workspace call", "workspace client call"},
        {"open my writing app workspace", "workspace writing app"},
        {"open the workspace", "open workspace"},
        {"open workspaces", "open workspaces"},
        {"open workspace workspace", "open workspace workspace"},
        {"writing workspace", "open writing workspace"},
    });
}

TEST(VoiceCommand, LongAndBrokenTextIsTakenAsItIs) {
    const std::string longName(1'000'000, 'x');
    EXPECT_EQ(understood("open " + longName), "open " + longName);
    EXPECT_EQ(understood("open" + test::repeated(" workspace", 100'000) + " x"), "workspace x");
    EXPECT_TRUE(VoiceCommand::parse("open \xff\xfe"));
    EXPECT_TRUE(VoiceCommand::parse(std::string_view("open\0x", 6)));
}

} // namespace
} // namespace vellory::input_tests
