// SPDX-License-Identifier: Apache-2.0
#include "model/LinkQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/FakePorts.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct LinkFlood {
    FakeClock clock;
    FakeScheduler scheduler{clock};
    std::vector<std::string> obeyed;
    std::vector<std::string> answers;
    LinkQueue queue{scheduler,
                    [this](const LinkRequest& request) { obeyed.push_back(request.link); }};

    void add(const std::string& link) {
        queue.add({.link = link},
                  [this, link](bool done) { answers.push_back((done ? "" : "not ") + link); });
    }
    void wait() { scheduler.advance(0); }
};

TEST(LinkQueue, LinksAreObeyedInOrderAndLaterThanTheyCome) {
    LinkFlood flood;
    flood.add("a");
    flood.add("b");
    EXPECT_THAT(flood.obeyed, IsEmpty());
    flood.wait();
    flood.add("a");
    flood.wait();
    EXPECT_THAT(flood.obeyed, ElementsAre("a", "b", "a"));
    EXPECT_THAT(flood.answers, ElementsAre("a", "b", "a"));
}

TEST(LinkQueue, WhatWouldNotBeSeenIsLeftOutAndStillAnswered) {
    const std::string toggle = "vellory://toggle";
    const std::vector<std::pair<std::vector<std::string>, std::vector<std::string>>> cases{
        {{"open", "open", "open", "hide", "open"}, {"open", "hide", "open"}},
        {{toggle}, {toggle}},
        {{toggle, toggle}, {}},
        {{toggle, toggle, toggle}, {toggle}},
        {{"a", toggle, toggle, "a"}, {"a", "a"}},
        {{"", "a", ""}, {"a"}},
    };
    for (const auto& [links, obeyed] : cases) {
        LinkFlood flood;
        for (const std::string& link : links) {
            flood.add(link);
        }
        flood.wait();
        EXPECT_EQ(flood.obeyed, obeyed);
        EXPECT_EQ(flood.answers, links);
    }
}

TEST(LinkQueue, TooManyDifferentLinksAreRefusedAndTheOthersObeyed) {
    LinkFlood flood;
    for (std::size_t i = 0; i < LinkQueue::longest; ++i) {
        flood.add(std::to_string(i));
    }
    flood.add("one more");
    EXPECT_THAT(flood.answers, ElementsAre("not one more"));
    flood.wait();
    EXPECT_EQ(flood.obeyed.size(), LinkQueue::longest);
    flood.add("one more");
    flood.wait();
    EXPECT_EQ(flood.obeyed.back(), "one more");
}

} // namespace
} // namespace vellory::test
