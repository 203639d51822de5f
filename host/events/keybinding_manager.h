#pragma once

#include "host/base/lightweight_string.h"

#include <cstdint>
#include <map>
#include <vector>

namespace wainscot {

/// Which keys run which commands. A program gives its commands keys to begin with; what the user assigns
/// instead is kept in the preference "Key bindings", for each command the list of its keys as `keyToString`
/// writes them. A key runs at most one command; the user's choice comes before what a program begins with.
///
/// Commands are named, whether they are registered at the moment or not. One manager belongs to the live
/// host. User-interface thread only.
class WAINSCOT_API KeybindingManager {
public:
    using Name = LightweightString<char>;
    using Keys = std::vector<std::uint32_t>;

    /// Becomes the live manager. Throws when another one lives.
    KeybindingManager();
    ~KeybindingManager();
    KeybindingManager(KeybindingManager const&) = delete;
    KeybindingManager& operator=(KeybindingManager const&) = delete;

    /// Throws when no host lives.
    static KeybindingManager& instance();

    /// The keys that run a command, the first one for display; empty when there are none.
    Keys getKeysAssignedToCommand(Name const& command);
    /// The command that a key runs; empty when it runs none.
    Name getCommandForKey(std::uint32_t key);

    /// The keys of a command as long as the user has chosen no others.
    void setDefaultKeys(Name const& command, Keys keys);
    /// Adds a key to those of a command, as the user's choice; it is taken from the command that had it.
    void assignKey(std::uint32_t key, Name const& command);
    /// Takes a key from the command that has it, as the user's choice.
    void unassignKey(std::uint32_t key);
    /// Forgets what the user has chosen for a command.
    void resetToDefaults(Name const& command);

private:
    using Table = std::map<Name, Keys>;

    /// Reads the user's choice at the first use.
    void load();
    void store();
    Keys const& keysOf(Name const& command) const;
    void setUserKeys(Name const& command, Keys keys);
    /// Makes the way from keys to commands again when something has changed.
    void refresh();
    void claimKeys(Table const& table, bool isUsers);

    Table users_;
    Table defaults_;
    std::map<std::uint32_t, Name> owners_;
    bool loaded_ = false;
    bool fresh_ = false;
};

} // namespace wainscot
