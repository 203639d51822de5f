#include "host/base/diagnostics.h"
#include "host/events/key_codes.h"
#include "host/events/key_names.h"
#include "host/events/keybinding_manager.h"
#include "host/services/command_map.h"
#include "host/services/json.h"
#include "host/services/preferences.h"
#include "tests/host_fixture.h"

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <stdexcept>

namespace wainscot {
namespace {

class CommandsTest : public HostTest {};

TEST_F(CommandsTest, AreFoundAndCalled) {
    std::wstring heard;
    CommandMap& map = CommandMap::instance();
    CommandRegistrar const play(
        "play", L"Play it", [&](Cmd::Context const& context) { heard = context.argument; },
        CommandRegistrar::Kind::transport);
    unsigned long const number = map.findCommand("play");
    ASSERT_EQ(number, play.number());
    EXPECT_EQ(map.getCommand(number)->displayName(), L"Play it");
    EXPECT_TRUE(map.getCommand(number)->isTransport());
    EXPECT_TRUE(map.callCommand(number, {L"fast", {}}));
    EXPECT_EQ(heard, L"fast");
    EXPECT_EQ(map.findCommand("Play"), CommandMap::none);
    EXPECT_EQ(map.findCommand(nullptr), CommandMap::none);
    EXPECT_FALSE(map.getCommand(CommandMap::none));
    EXPECT_FALSE(map.callCommand(CommandMap::none, {}));
    expectDiagnostic("unknown command");
}

TEST_F(CommandsTest, RefusedOnesChangeNothing) {
    int calls = 0;
    CommandRegistrar const first("save", L"", [&](Cmd::Context const&) { ++calls; });
    {
        CommandRegistrar const second("save", L"", [](Cmd::Context const&) {});
        CommandRegistrar const unnamed("", L"", [](Cmd::Context const&) {});
        CommandRegistrar const idle("idle", L"", {});
        for (auto const* refused : {&second, &unnamed, &idle}) EXPECT_EQ(refused->number(), CommandMap::none);
    }
    EXPECT_EQ(Diagnostics::countOf("command refused"), 3u);
    EXPECT_TRUE(CommandMap::instance().callCommand(first.number(), {}));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(CommandMap::instance().commands().size(), 1u);
    expectDiagnostic("command refused");
}

TEST_F(CommandsTest, MayRemoveThemselvesOrThrow) {
    auto const kept = std::make_shared<int>(5);
    std::unique_ptr<CommandRegistrar> own;
    int seen = 0;
    own = std::make_unique<CommandRegistrar>("own", L"", [&own, &seen, kept](Cmd::Context const&) {
        own.reset();
        seen = *kept;
    });
    unsigned long const number = own->number();
    EXPECT_TRUE(CommandMap::instance().callCommand(number, {}));
    EXPECT_EQ(seen, 5);
    EXPECT_FALSE(CommandMap::instance().getCommand(number));
    CommandRegistrar const bad("bad", L"", [](Cmd::Context const&) { throw std::runtime_error("no"); });
    EXPECT_NE(bad.number(), number);
    EXPECT_THROW(CommandMap::instance().callCommand(bad.number(), {}), std::runtime_error);
}

TEST(CommandsWithoutHost, ARegistrarOutlivesItsHost) {
    EXPECT_THROW(CommandMap::instance(), std::logic_error);
    EXPECT_THROW(KeybindingManager::instance(), std::logic_error);
    auto map = std::make_unique<CommandMap>();
    std::optional<CommandRegistrar> old;
    old.emplace("old", L"", [](Cmd::Context const&) {});
    map.reset();
    map = std::make_unique<CommandMap>();
    CommandRegistrar const fresh("new", L"", [](Cmd::Context const&) {});
    old.reset();
    EXPECT_TRUE(map->getCommand(fresh.number()));
}

class KeyBindingsTest : public HostTest {
protected:
    static KeybindingManager& keys() { return KeybindingManager::instance(); }
    static constexpr std::uint32_t ctrlS = Key::ctrl | 'S';
    static constexpr std::uint32_t ctrlComma = Key::ctrl | ',';
};

TEST_F(KeyBindingsTest, UsersChoiceComesFirst) {
    keys().setDefaultKeys("save", {ctrlS, Key::f1});
    keys().setDefaultKeys("help", {Key::f1});
    EXPECT_THAT(keys().getKeysAssignedToCommand("help"), ElementsAre(Key::f1));
    EXPECT_THAT(keys().getKeysAssignedToCommand("save"), ElementsAre(ctrlS));
    keys().assignKey(ctrlS, "sort");
    keys().assignKey(ctrlComma, "sort");
    EXPECT_THAT(keys().getKeysAssignedToCommand("sort"), ElementsAre(ctrlS, ctrlComma));
    EXPECT_THAT(keys().getKeysAssignedToCommand("save"), IsEmpty());
    EXPECT_EQ(keys().getCommandForKey(ctrlS), "sort");
    keys().unassignKey(Key::f1);
    EXPECT_EQ(keys().getCommandForKey(Key::f1), "");
    keys().setDefaultKeys("late", {ctrlS});
    EXPECT_THAT(keys().getKeysAssignedToCommand("late"), IsEmpty());
    keys().resetToDefaults("sort");
    keys().resetToDefaults("save");
    EXPECT_TRUE(prefs().value("Key bindings").member("sort").isNull());
    EXPECT_EQ(keys().getCommandForKey(ctrlComma), "");
    EXPECT_EQ(keys().getCommandForKey(ctrlS), "late");
    EXPECT_THAT(keys().getKeysAssignedToCommand("nothing"), IsEmpty());
}

TEST_F(KeyBindingsTest, AreKeptInThePreferences) {
    keys().setDefaultKeys("save", {ctrlS});
    keys().unassignKey(ctrlS);
    keys().assignKey(ctrlComma, "settings");
    keys().assignKey(Key::pageUp | Key::shift, "settings");
    EXPECT_EQ(prefs().value("Key bindings").write(), R"({"save":[],"settings":["Ctrl+,","Shift+Page Up"]})");
}

TEST_F(KeyBindingsTest, DamagedOnesAreLeftOut) {
    prefs().setValue("Key bindings", *parseJson(R"({"a": ["Ctrl+S", "Hyper+Q", 7, "Ctrl+S"], "b": "x",
                                                    "c": ["Ctrl+S", "F1"]})")
                                          .value);
    EXPECT_THAT(keys().getKeysAssignedToCommand("a"), ElementsAre(ctrlS));
    EXPECT_THAT(keys().getKeysAssignedToCommand("c"), ElementsAre(Key::f1));
    EXPECT_EQ(Diagnostics::countOf("key binding not understood"), 2u);
    expectDiagnostic("key binding not understood");
}

} // namespace
} // namespace wainscot
