// Version 2 of the protocol while the documentation and its language change.
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RunningSession.hpp"
#include "docset/publish.hpp"
#include "rpcResults.hpp"
#include "support/LibraryTest.hpp"
#include "support/TempFolder.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

namespace json = boost::json;
using property::RefEntityType;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(WatchRpcChangesTest, TheLanguageIsChangedForWhatIsReadAfterwards) {
    RunningSession session;
    const auto purposeOf = [](const json::object& result) {
        return std::string(firstHit(result).at("purpose").as_string());
    };
    const json::object filter{{"question", "filter"}, {"products", {"lumora"}}};
    EXPECT_EQ(purposeOf(session.resultOf("ask", filter)), "Filter an image with a mask");
    static_cast<void>(session.notices());

    const auto changed = session.resultOf("setLanguage", {{"language", "ja"}});
    EXPECT_EQ(changed.at("language"), "ja_JP");
    EXPECT_EQ(changed.at("products"), 10);
    const auto notices = session.notices();
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(json::serialize(notices[0]),
              R"({"jsonrpc":"2.0","method":"languageChanged","params":)"
              R"({"language":"ja_JP","products":10,"entities":190}})");
    EXPECT_EQ(purposeOf(session.resultOf("ask", filter)), "マスクによる画像のフィルター処理");

    static_cast<void>(session.resultOf("setLanguage", {{"language", "ja_JP"}}));
    EXPECT_THAT(session.notices(), IsEmpty()) << "it was Japanese already";
}

// All requests at once: each is answered from one language, those after the change from the new.
TEST(WatchRpcChangesTest, RequestsAreOrderedByAChangeOnly) {
    RunningSession session;
    static_cast<void>(session.read());
    const auto ask = [](int id) {
        return R"({"jsonrpc":"2.0","id":)" + std::to_string(id) +
               R"(,"method":"ask","params":{"question":"filter","products":["lumora"],)"
               R"("fields":["purpose"]}})"
               "\n";
    };
    std::string lines;
    for (int id = 0; id < 20; ++id)
        lines += ask(id);
    lines += R"({"jsonrpc":"2.0","id":"change","method":"setLanguage","params":{"language":"ja"}})"
             "\n";
    for (int id = 20; id < 40; ++id)
        lines += ask(id);
    session.send(lines);
    std::set<std::int64_t> answered;
    while (answered.size() < 40) {
        const auto value = session.read();
        if (!value.contains("id") || value.at("id") == "change")
            continue;
        const auto id = value.at("id").to_number<std::int64_t>();
        EXPECT_TRUE(answered.insert(id).second);
        const std::string purpose = textAt(value, "/result/hits/0/purpose");
        if (id >= 20)
            EXPECT_EQ(purpose, "マスクによる画像のフィルター処理") << id;
        else
            EXPECT_TRUE(purpose == "Filter an image with a mask" ||
                        purpose == "マスクによる画像のフィルター処理")
                << id << purpose;
    }
    EXPECT_EQ(session.end(), 0);
}

class WatchRpcSetTest : public ::testing::Test {
  protected:
    WatchRpcSetTest() { publish(u"first"); }

    void publish(const std::u16string& purpose, const std::u16string& name = u"tools") const {
        docset::publishProduct(
            m_root.path(), "en_US",
            ProductBuilder(name).entity(u"f", RefEntityType::Function, u"f.html", purpose).build());
    }
    static std::vector<std::string> purposes(RunningSession& session) {
        return textsIn(session.resultOf("find", {{"name", "f"}}), "hits", "purpose");
    }
    [[nodiscard]] const TempFolder& root() const noexcept { return m_root; }

  private:
    TempFolder m_root;
};

TEST_F(WatchRpcSetTest, ARequestIsAnsweredFromWhatIsOnTheDisk) {
    RunningSession session({"--doc-root", root().path().string()});
    EXPECT_THAT(purposes(session), ElementsAre("first"));
    for (const char16_t* edition : {u"second", u"third"}) {
        static_cast<void>(session.notices());
        publish(edition);
        EXPECT_THAT(purposes(session),
                    ElementsAre(std::string(
                        edition, edition + std::char_traits<char16_t>::length(edition))));
        const auto notices = session.notices();
        ASSERT_EQ(notices.size(), 1U);
        EXPECT_EQ(textAt(notices[0], "/method"), "documentationChanged");
        EXPECT_EQ(textAt(notices[0], "/params/why"), "documentation");
    }
}

TEST_F(WatchRpcSetTest, NoticesSpeakTheClientsVersion) {
    RunningSession session({"--doc-root", root().path().string()});
    EXPECT_EQ(textAt(session.read(), "/notice"), "ready");
    EXPECT_EQ(session.ask("f").at("total"), 1);
    publish(u"added", u"more");
    EXPECT_EQ(textAt(session.read(), "/notice"), "reloaded");

    static_cast<void>(session.call("products"));
    publish(u"added", u"again");
    const auto notice = session.read();
    EXPECT_EQ(json::serialize(notice),
              R"({"jsonrpc":"2.0","method":"documentationChanged","params":)"
              R"({"why":"documentation","language":"en_US","products":3,"entities":3}})");
    // Lines of version 1 are answered as ever.
    const auto answer = session.ask("f --product tools");
    EXPECT_EQ(answer.at("line"), 3);
    EXPECT_EQ(answer.at("total"), 1);
    EXPECT_TRUE(session.ask(":reload").contains("done"));
    const auto notices = session.notices();
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(textAt(notices[0], "/params/why"), "request");
    EXPECT_TRUE(session.ask("[\"f\"]").contains("results"));
}

TEST_F(WatchRpcSetTest, ReloadReadsWhatTheManifestDoesNotTell) {
    RunningSession session({"--doc-root", root().path().string()});
    EXPECT_THAT(purposes(session), ElementsAre("first"));
    const std::string file = "en_US/tools-1.reference.json";
    std::string content = root().read(file);
    content.replace(content.find("first"), 5, "typed");
    root().write(file, content);
    EXPECT_THAT(purposes(session), ElementsAre("first"));
    EXPECT_EQ(session.resultOf("reload").at("products"), 1);
    EXPECT_THAT(purposes(session), ElementsAre("typed"));
}

TEST_F(WatchRpcSetTest, AProductThatCannotBeReadIsAWarningAndTheOthersAnswer) {
    publish(u"sound", u"other");
    root().write("en_US/tools-1.reference.json", "{");
    RunningSession session({"--doc-root", root().path().string()});
    static_cast<void>(session.call("initialize"));
    static_cast<void>(session.notices());
    EXPECT_THAT(purposes(session), ElementsAre("sound"));
    const auto notices = session.notices();
    ASSERT_GE(notices.size(), 1U);
    EXPECT_EQ(textAt(notices[0], "/method"), "warning");
    EXPECT_THAT(textAt(notices[0], "/params/text"), HasSubstr("en_US/tools-1.reference.json:1:2"));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
