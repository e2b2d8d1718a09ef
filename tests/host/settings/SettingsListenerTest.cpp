// Which listeners hear of a change of a setting, and when.
#include <atomic>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <variant>
#include <vector>

#include <gmock/gmock.h>

#include "foundation/msg_svc/eventmgr/ScopedConnection.hpp"
#include "settings/core/Settings.hpp"
#include "settings/core/SettingsValueChangeEvent.hpp"
#include "settings/in_veltra/addListener.hpp"
#include "support/Capture.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using foundation::msg_svc::eventmgr::Connection;
using settings::core::Settings;
using settings::core::SettingsException;
using settings::core::SettingsValue;
using settings::core::SettingsValueChangeEvent;
using testing::ElementsAre;
using testing::IsEmpty;

std::string text(const SettingsValue& value) {
    return *value.getIf<std::string>();
}

class SettingsListenerTest : public testing::Test {
  protected:
    // Notes "name: old -> new" of every change of `node`, then does `then`.
    [[nodiscard]] std::unique_ptr<Connection> listen(
        const std::shared_ptr<Settings>& node, const std::string& name,
        std::function<void()> then = [] {}) {
        return settings::in_veltra::addListener<SettingsValueChangeEvent>(
            node, [this, name, then](const SettingsValueChangeEvent& event) {
                m_heard.push_back(name + ": " + text(event.getOldValue()) + " -> " +
                                  text(event.getNewValue()));
                then();
            });
    }

    [[nodiscard]] std::vector<std::string>& heard() { return m_heard; }
    [[nodiscard]] const std::shared_ptr<Settings>& root() const { return m_root; }
    [[nodiscard]] const std::shared_ptr<Settings>& language() const { return m_language; }
    void speak(const std::string& value) const { m_language->setValue(value); }

  private:
    std::shared_ptr<Settings> m_root = Settings::makeRoot();
    std::shared_ptr<Settings> m_language = m_root->declare("help.Language", std::string("en"));
    std::vector<std::string> m_heard;
};

TEST_F(SettingsListenerTest, EveryListenerHearsOfEveryChange) {
    const auto a = listen(language(), "a");
    const auto b = listen(language(), "b");
    speak("ja");
    speak("de");
    EXPECT_THAT(heard(), ElementsAre("a: en -> ja", "b: en -> ja", "a: ja -> de", "b: ja -> de"));
}

TEST_F(SettingsListenerTest, AnEqualValueNotifiesNobody) {
    const auto a = listen(language(), "a");
    speak("en");
    EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(SettingsListenerTest, ARefusedValueNotifiesNobody) {
    const auto a = listen(language(), "a");
    EXPECT_THROW(language()->setValue(true), SettingsException);
    EXPECT_THAT(heard(), IsEmpty());
    EXPECT_EQ(language()->get<std::string>(), "en");
}

TEST_F(SettingsListenerTest, OtherSettingsAreNoConcernOfTheListener) {
    const auto other = root()->declare("help.Root", std::string("/a"));
    const auto a = listen(language(), "a");
    other->setValue(std::string("/b"));
    EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(SettingsListenerTest, ADestroyedConnectionEndsTheListening) {
    auto a = listen(language(), "a");
    a.reset();
    speak("ja");
    EXPECT_THAT(heard(), IsEmpty());
}

TEST_F(SettingsListenerTest, AConnectionMayOutliveTheTree) {
    auto tree = Settings::makeRoot();
    auto connection = listen(tree->declare("a", std::string()), "a");
    tree.reset();
    EXPECT_NO_THROW(connection.reset());
}

// A listener would wait forever if the change still held the setting's lock.
TEST_F(SettingsListenerTest, AListenerMayReadAndSetTheSetting) {
    const auto a = listen(language(), "a", [this] {
        if (language()->get<std::string>() == "ja")
            speak("de");
    });
    speak("ja");
    EXPECT_EQ(language()->get<std::string>(), "de");
    EXPECT_THAT(heard(), ElementsAre("a: en -> ja", "a: ja -> de"));
}

TEST_F(SettingsListenerTest, AListenerMayAddAndEndListeners) {
    std::unique_ptr<Connection> late;
    std::unique_ptr<Connection> own;
    own = listen(language(), "own", [&] {
        own.reset();
        late = listen(language(), "late");
    });
    speak("ja");
    speak("de");
    EXPECT_THAT(heard(), ElementsAre("own: en -> ja", "late: ja -> de"));
}

TEST_F(SettingsListenerTest, AListenerThatThrowsNeitherSilencesTheOthersNorFailsTheChange) {
    const LogCapture log("eventmgr=2");
    const auto a = listen(language(), "a", [] { throw std::runtime_error("out of ink"); });
    const auto b = listen(language(), "b");
    EXPECT_NO_THROW(speak("ja"));
    EXPECT_THAT(heard(), ElementsAre("a: en -> ja", "b: en -> ja"));
    EXPECT_THAT(log.texts(), ElementsAre("a subscriber of settings::core::"
                                         "SettingsValueChangeEvent failed: out of ink"));
}

TEST_F(SettingsListenerTest, ListenersRunOnTheThreadThatMadeTheChange) {
    std::thread::id heardOn;
    const auto a = listen(language(), "a", [&] { heardOn = std::this_thread::get_id(); });
    std::thread changer([this] { speak("ja"); });
    const auto changedOn = changer.get_id();
    changer.join();
    EXPECT_EQ(heardOn, changedOn);
}

TEST_F(SettingsListenerTest, TheEventTellsTheSettingsFullName) {
    std::string name;
    const auto connection = language()->addListener(
        [&](const SettingsValueChangeEvent& event) { name = event.getFullName(); });
    speak("ja");
    EXPECT_EQ(name, "help.Language");
}

TEST_F(SettingsListenerTest, RefusesWhatCannotBeListenedTo) {
    const auto group = root()->getSettingsByFullName("help");
    EXPECT_THROW(static_cast<void>(listen(group, "a")), SettingsException);
    EXPECT_THROW(static_cast<void>(listen(nullptr, "a")), SettingsException);
    EXPECT_THROW(static_cast<void>(language()->addListener(nullptr)), std::invalid_argument);
}

TEST(SettingsConcurrencyTest, NoChangeIsLostWhenSeveralThreadsMakeThem) {
    constexpr int rounds = 1000;
    const auto setting = Settings::makeRoot()->declare("count", std::int64_t{0});
    std::atomic<int> told{0};
    const auto connection = setting->addListener([&](const SettingsValueChangeEvent&) { ++told; });
    std::vector<std::thread> threads;
    threads.reserve(3);
    for (int thread = 0; thread < 3; ++thread)
        threads.emplace_back([&, thread] {
            for (int round = 0; round < rounds; ++round)
                setting->setValue(std::int64_t{1} + thread * rounds + round);
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(told, 3 * rounds);
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
