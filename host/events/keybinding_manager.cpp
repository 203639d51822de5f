#include "host/events/keybinding_manager.h"

#include "host/base/diagnostics.h"
#include "host/events/key_names.h"
#include "host/services/preferences.h"

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
    for (auto const& [command, list] : prefs().value(preference).members()) {
        if (!list.isArray()) continue;
        disclaimKeys(command);
        users_[command] = keysFrom(list);
        claimKeys(command);
    }
}

void KeybindingManager::claimKeys(Name const& command) {
    bool const byDefault = users_.count(command) == 0;
    for (std::uint32_t const key : keysOf(command)) claims_[key].insert({byDefault, command});
}

void KeybindingManager::disclaimKeys(Name const& command) {
    bool const byDefault = users_.count(command) == 0;
    for (std::uint32_t const key : keysOf(command)) {
        auto const claims = claims_.find(key);
        if (claims == claims_.end()) continue;
        claims->second.erase({byDefault, command});
        if (claims->second.empty()) claims_.erase(claims);
    }
}

KeybindingManager::Keys const& KeybindingManager::keysOf(Name const& command) const {
    static Keys const none;
    if (auto const users = users_.find(command); users != users_.end()) return users->second;
    auto const found = defaults_.find(command);
    return found == defaults_.end() ? none : found->second;
}

KeybindingManager::Keys KeybindingManager::getKeysAssignedToCommand(Name const& command) {
    load();
    Keys keys;
    std::set<std::uint32_t> seen;
    for (std::uint32_t const key : keysOf(command))
        if (seen.insert(key).second && getCommandForKey(key) == command) keys.push_back(key);
    return keys;
}

KeybindingManager::Name KeybindingManager::getCommandForKey(std::uint32_t key) {
    load();
    auto const found = claims_.find(key);
    return found == claims_.end() ? Name() : found->second.begin()->command;
}

void KeybindingManager::setDefaultKeys(Name const& command, Keys keys) {
    disclaimKeys(command);
    defaults_[command] = std::move(keys);
    claimKeys(command);
}

void KeybindingManager::setUserKeys(Name const& command, Keys keys) {
    disclaimKeys(command);
    prefs().setEntry(preference, command, listOf(keys));
    users_[command] = std::move(keys);
    claimKeys(command);
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
    if (users_.count(command) == 0) return;
    disclaimKeys(command);
    users_.erase(command);
    claimKeys(command);
    prefs().setEntry(preference, command, JsonValue());
}

} // namespace wainscot
