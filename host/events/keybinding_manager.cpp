#include "host/events/keybinding_manager.h"

#include "host/base/diagnostics.h"
#include "host/events/key_names.h"
#include "host/services/preferences.h"

#include <algorithm>
#include <stdexcept>

namespace wainscot {

namespace {

constinit KeybindingManager* liveManager = nullptr;
constexpr char const* preference = "Key bindings";

KeybindingManager::Keys keysFrom(JsonValue const& list) {
    KeybindingManager::Keys keys;
    for (std::size_t i = 0; i < list.size(); ++i) {
        LightweightString<char> const text = list.at(i).asText().value_or("(no text)");
        if (std::optional<std::uint32_t> const key = keyFromString(text))
            keys.push_back(*key);
        else
            Diagnostics::count("key binding not understood", text.c_str());
    }
    return keys;
}

JsonValue listOf(KeybindingManager::Keys const& keys) {
    JsonValue list = JsonValue::array();
    for (std::uint32_t const key : keys) list.add(JsonValue(keyToString(key)));
    return list;
}

} // namespace

KeybindingManager::KeybindingManager() {
    if (liveManager) throw std::logic_error("wainscot: only one host may live at a time");
    liveManager = this;
}

KeybindingManager::~KeybindingManager() {
    liveManager = nullptr;
}

KeybindingManager& KeybindingManager::instance() {
    if (!liveManager) throw std::logic_error("wainscot: no host lives");
    return *liveManager;
}

void KeybindingManager::load() {
    if (loaded_) return;
    loaded_ = true;
    for (auto const& [command, list] : prefs().value(preference).members())
        if (list.isArray()) users_[command] = keysFrom(list);
}

void KeybindingManager::store() {
    JsonValue all = JsonValue::object();
    for (auto const& [command, keys] : users_) all.set(command, listOf(keys));
    prefs().setValue(preference, std::move(all));
    fresh_ = false;
}

void KeybindingManager::claimKeys(Table const& table, bool isUsers) {
    for (auto const& [command, keys] : table) {
        if (!isUsers && users_.count(command) != 0) continue;
        for (std::uint32_t const key : keys) owners_.emplace(key, command);
    }
}

void KeybindingManager::refresh() {
    load();
    if (fresh_) return;
    fresh_ = true;
    owners_.clear();
    claimKeys(users_, true);
    claimKeys(defaults_, false);
}

KeybindingManager::Keys const& KeybindingManager::keysOf(Name const& command) const {
    static Keys const none;
    if (auto const users = users_.find(command); users != users_.end()) return users->second;
    auto const found = defaults_.find(command);
    return found == defaults_.end() ? none : found->second;
}

KeybindingManager::Keys KeybindingManager::getKeysAssignedToCommand(Name const& command) {
    refresh();
    Keys keys;
    for (std::uint32_t const key : keysOf(command)) {
        bool const isNew = std::find(keys.begin(), keys.end(), key) == keys.end();
        if (isNew && getCommandForKey(key) == command) keys.push_back(key);
    }
    return keys;
}

KeybindingManager::Name KeybindingManager::getCommandForKey(std::uint32_t key) {
    refresh();
    auto const found = owners_.find(key);
    return found == owners_.end() ? Name() : found->second;
}

void KeybindingManager::setDefaultKeys(Name const& command, Keys keys) {
    defaults_[command] = std::move(keys);
    fresh_ = false;
}

void KeybindingManager::setUserKeys(Name const& command, Keys keys) {
    users_[command] = std::move(keys);
    store();
}

void KeybindingManager::unassignKey(std::uint32_t key) {
    Name const owner = getCommandForKey(key);
    if (owner.empty()) return;
    Keys keys = getKeysAssignedToCommand(owner);
    std::erase(keys, key);
    setUserKeys(owner, std::move(keys));
}

void KeybindingManager::assignKey(std::uint32_t key, Name const& command) {
    if (command.empty() || getCommandForKey(key) == command) return;
    unassignKey(key);
    Keys keys = getKeysAssignedToCommand(command);
    keys.push_back(key);
    setUserKeys(command, std::move(keys));
}

void KeybindingManager::resetToDefaults(Name const& command) {
    load();
    if (users_.erase(command) != 0) store();
}

} // namespace wainscot
