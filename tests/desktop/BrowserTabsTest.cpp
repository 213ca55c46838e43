// SPDX-License-Identifier: Apache-2.0
#include "platform/linux/desktop/BrowserTabs.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/FakeHttpClient.h"
#include "support/TemporaryFolder.h"

namespace vellory::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class BrowserTabsTest : public testing::Test {
  protected:
    void setPort(const std::string& profile, const std::string& content) const {
        folder.write("config/" + profile + "/DevToolsActivePort", content);
    }
    void setAnswer(const std::string& port, const std::string& answer) {
        http.answers["http://127.0.0.1:" + port + "/json/list"] = answer;
    }
    std::vector<std::string> tabs() const {
        return BrowserTabs::open({{"HOME=" + folder.path().string(),
                                   "XDG_CONFIG_HOME=" + (folder.path() / "config").string()}},
                                 http);
    }

    TemporaryFolder folder;
    FakeHttpClient http;
};

TEST_F(BrowserTabsTest, PagesOfEachBrowserInTurn) {
    setPort("chromium", "9222\n/devtools/browser/0-0");
    setAnswer("9222", R"([{"type":"page","url":"https://b.example/"},
        {"type":"service_worker","url":"https://worker.example/"},{"type":"iframe","url":"x"},
        {"type":"page","url":"chrome://settings/"},{"type":"page","url":7},{"type":"page"},
        "page",{"url":"https://no.type/"},{"type":"page","url":"https://a.example/"}])");
    setPort("BraveSoftware/Brave-Browser", "9333");
    setAnswer("9333", R"([{"type":"page","url":"https://b.example/"}])");
    EXPECT_THAT(tabs(), ElementsAre("https://b.example/", "chrome://settings/",
                                    "https://a.example/", "https://b.example/"));
    ASSERT_EQ(http.asked.size(), 2U);
    EXPECT_TRUE(http.asked.front().direct);
    EXPECT_LE(http.asked.front().patience, std::chrono::seconds(1));
}

TEST_F(BrowserTabsTest, PortFilesAndAnswersThatAreNoneGiveNothing) {
    EXPECT_THAT(tabs(), IsEmpty());
    const std::string ports[] = {
        "", "0\n", "-1", "92229222", "9222@evil.example", " 9222", std::string(100'000, '1')};
    for (const std::string& content : ports) {
        setPort("vivaldi", content);
        EXPECT_THAT(tabs(), IsEmpty()) << content.substr(0, 50);
    }
    // A pipe instead of a file would block whoever opens it.
    std::filesystem::remove(folder.path() / "config/vivaldi/DevToolsActivePort");
    ASSERT_EQ(mkfifo((folder.path() / "config/vivaldi/DevToolsActivePort").c_str(), 0600), 0);
    EXPECT_THAT(tabs(), IsEmpty());
    EXPECT_THAT(http.asked, IsEmpty());

    setPort("microsoft-edge", "9222\n");
    const std::string answers[] = {R"([{"type":"page","url":"https://a.example/"})",
                                   std::string(100'000, '['),
                                   R"({"type":"page","url":"https://a.example/"})", ""};
    for (const std::string& answer : answers) {
        setAnswer("9222", answer);
        EXPECT_THAT(tabs(), IsEmpty()) << answer.substr(0, 50);
    }
}

} // namespace
} // namespace vellory::test
