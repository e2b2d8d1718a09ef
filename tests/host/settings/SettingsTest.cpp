#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "foundation/core/context/ContextRegistry.hpp"
#include "settings/core/Settings.hpp"
#include "settings/in_veltra/settingsRoot.hpp"

namespace reference::tests {
namespace VELTRA_TEST_FILE {

using settings::core::Settings;
using settings::core::SettingsException;
using settings::in_veltra::getSettingsRoot;
using testing::HasSubstr;
using testing::ThrowsMessage;
using Texts = std::vector<std::string>;

TEST(SettingsTest, HasTheDeclaredValueUntilItIsSet) {
    const auto root = Settings::makeRoot();
    const auto declared = root->declare("a.b.width", std::int64_t{3});
    EXPECT_EQ(root->getSettingsByFullName("a.b.width"), declared);
    EXPECT_EQ(declared->getName(), "width");
    EXPECT_EQ(declared->getFullName(), "a.b.width");
    EXPECT_EQ(declared->get<std::int64_t>(), 3);
    declared->setValue(std::int64_t{4});
    EXPECT_EQ(root->getSettingsByFullName("a.b.width")->get<std::int64_t>(), 4);
}

TEST(SettingsTest, HoldsEachOfItsTypes) {
    const auto root = Settings::makeRoot();
    EXPECT_TRUE(root->declare("flag", true)->get<bool>());
    EXPECT_EQ(root->declare("count", std::int64_t{-7})->get<std::int64_t>(), -7);
    EXPECT_EQ(root->declare("ratio", 0.5)->get<double>(), 0.5);
    EXPECT_EQ(root->declare("name", std::string("x"))->get<std::string>(), "x");
    EXPECT_EQ(root->declare("names", Texts{"x", ""})->get<Texts>(), (Texts{"x", ""}));
}

TEST(SettingsTest, CountsNamesFromTheNodeThatIsAsked) {
    const auto root = Settings::makeRoot();
    const auto setting = root->declare("a.b.c", true);
    const auto group = root->getSettingsByFullName("a.b");
    EXPECT_EQ(group->getFullName(), "a.b");
    EXPECT_EQ(group->getSettingsByFullName("c"), setting);
    EXPECT_EQ(group->declare("d", true)->getFullName(), "a.b.d");
    EXPECT_EQ(root->getName(), "");
    EXPECT_EQ(root->getFullName(), "");
}

TEST(SettingsTest, DeclaringAgainChangesNothing) {
    const auto root = Settings::makeRoot();
    const auto setting = root->declare("a.b", std::string("first"));
    setting->setValue(std::string("set"));
    EXPECT_EQ(root->declare("a.b", std::string("second")), setting);
    EXPECT_EQ(setting->get<std::string>(), "set");
}

TEST(SettingsTest, RefusesAnotherType) {
    const auto root = Settings::makeRoot();
    const auto setting = root->declare("a.b", std::string("text"));
    const auto namesIt = ThrowsMessage<SettingsException>(HasSubstr("\"a.b\""));
    EXPECT_THAT([&] { static_cast<void>(setting->get<bool>()); }, namesIt);
    EXPECT_THAT([&] { setting->setValue(true); }, namesIt);
    EXPECT_THAT([&] { root->declare("a.b", Texts{}); }, namesIt);
    EXPECT_EQ(setting->get<std::string>(), "text");
}

TEST(SettingsTest, RefusesANameThatNobodyDeclared) {
    const auto root = Settings::makeRoot();
    root->declare("a.b", true);
    const auto ask = [&](const std::string& name) {
        return [&root, name] { static_cast<void>(root->getSettingsByFullName(name)); };
    };
    EXPECT_THAT(ask("x"), ThrowsMessage<SettingsException>(HasSubstr("\"x\"")));
    EXPECT_THAT(ask("a.x"), ThrowsMessage<SettingsException>(HasSubstr("\"a.x\"")));
    EXPECT_THAT(ask("a.b.x"), ThrowsMessage<SettingsException>(HasSubstr("\"a.b.x\"")));
    EXPECT_THAT(ask("A.b"), ThrowsMessage<SettingsException>(HasSubstr("\"A\"")));
}

TEST(SettingsTest, AGroupHasNoValue) {
    const auto root = Settings::makeRoot();
    root->declare("a.b", true);
    const auto group = root->getSettingsByFullName("a");
    const auto namesIt = ThrowsMessage<SettingsException>(HasSubstr("\"a\" is a group"));
    EXPECT_THAT([&] { static_cast<void>(group->getValue()); }, namesIt);
    EXPECT_THAT([&] { static_cast<void>(group->get<bool>()); }, namesIt);
    EXPECT_THAT([&] { group->setValue(true); }, namesIt);
}

TEST(SettingsTest, AGroupMayBeASettingToo) {
    const auto root = Settings::makeRoot();
    const auto inner = root->declare("a.b", true);
    const auto outer = root->declare("a", std::string("value"));
    EXPECT_EQ(outer->get<std::string>(), "value");
    EXPECT_EQ(root->getSettingsByFullName("a.b"), inner);
}

TEST(SettingsTest, NodesOutliveTheirRoot) {
    auto root = Settings::makeRoot();
    const auto setting = root->declare("a.b", std::string("kept"));
    root.reset();
    EXPECT_EQ(setting->get<std::string>(), "kept");
}

TEST(SettingsRootTest, IsDeclaredAndItsOwnInEachContext) {
    constexpr foundation::core::context::ContextId one = 7001;
    constexpr foundation::core::context::ContextId other = 7002;
    EXPECT_EQ(getSettingsRoot(one), getSettingsRoot(one));
    EXPECT_NE(getSettingsRoot(one), getSettingsRoot(other));
    for (const char* name :
         {settings::in_veltra::docRootSetting, settings::in_veltra::docLanguageSetting,
          settings::in_veltra::logSetting}) {
        SCOPED_TRACE(name);
        const auto setting = getSettingsRoot(one)->getSettingsByFullName(name);
        EXPECT_EQ(setting->get<std::string>(), "");
        setting->setValue(std::string("changed"));
        EXPECT_EQ(getSettingsRoot(one)->getSettingsByFullName(name)->get<std::string>(), "changed");
        EXPECT_EQ(getSettingsRoot(other)->getSettingsByFullName(name)->get<std::string>(), "");
        setting->setValue(std::string());
    }
    EXPECT_EQ(getSettingsRoot(one)
                  ->getSettingsByFullName(settings::in_veltra::supportPackageRootsSetting)
                  ->get<Texts>(),
              Texts{});
}

TEST(ContextRegistryTest, TheCurrentContextIsOneUntilItIsChanged) {
    using foundation::core::context::ContextRegistry;
    EXPECT_EQ(ContextRegistry::getCurrentContextId(), 1U);
    ContextRegistry::setCurrentContextId(7003);
    EXPECT_EQ(ContextRegistry::getCurrentContextId(), 7003U);
    ContextRegistry::setCurrentContextId(1);
}

// A value that is written as a whole is read as a whole.
TEST(SettingsConcurrencyTest, ReadersSeeWholeValuesWhileWritersChangeThem) {
    const auto root = Settings::makeRoot();
    const auto value = [](std::size_t length) {
        return Texts(length, std::string(40 + length, static_cast<char>('a' + length)));
    };
    root->declare("group.list", value(0));
    std::atomic<int> broken{0};
    std::vector<std::thread> threads;
    threads.reserve(8);
    for (std::size_t writer = 0; writer < 2; ++writer)
        threads.emplace_back([&, writer] {
            for (std::size_t round = 0; round < 300; ++round) {
                root->getSettingsByFullName("group.list")->setValue(value((round + writer) % 9));
                root->declare("group.more" + std::to_string(round), std::int64_t{1});
            }
        });
    for (int reader = 0; reader < 2; ++reader)
        threads.emplace_back([&] {
            for (int round = 0; round < 600; ++round) {
                const auto read = root->getSettingsByFullName("group.list")->get<Texts>();
                if (read != value(read.size()))
                    ++broken;
            }
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(broken, 0);
    EXPECT_EQ(root->getSettingsByFullName("group.more299")->get<std::int64_t>(), 1);
}

TEST(SettingsConcurrencyTest, ContextsGetOneRootEachWhoeverAsksFirst) {
    constexpr foundation::core::context::ContextId context = 7100;
    std::vector<std::shared_ptr<Settings>> seen(8);
    std::vector<std::thread> threads;
    threads.reserve(8);
    for (auto& place : seen)
        threads.emplace_back([&place] { place = getSettingsRoot(context); });
    for (auto& thread : threads)
        thread.join();
    EXPECT_THAT(seen, testing::Each(getSettingsRoot(context)));
}

}  // namespace VELTRA_TEST_FILE
}  // namespace reference::tests
