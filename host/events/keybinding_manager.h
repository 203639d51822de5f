#pragma once

#include "host/base/lightweight_string.h"

#include <cstdint>
#include <map>
#include <set>
#include <vector>

namespace wainscot {

/// Which keys run which commands. A program gives its commands default keys. The user's own choice is kept in
/// the preference "Key bindings": for each command the list of its keys as `keyToString` writes them. A key
/// runs at most one command; the user's choice comes before default keys.
///
/// Commands are known by name and need not be registered. One manager belongs to the live host.
/// User-interface thread only.
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

    /// Sets the default keys of a command, which count as long as the user has not chosen others.
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
    Keys const& keysOf(Name const& command) const;
    void setUserKeys(Name const& command, Keys keys);
    /// Takes the keys of a command out of the table; `claimKeys` enters its present keys again.
    void disclaimKeys(Name const& command);
    void claimKeys(Name const& command);

    Table users_;
    Table defaults_;
    /// A command that wants a key. The first claim wins; claims of the user's choice come first.
    struct Claim {
        bool byDefault;
        Name command;
        bool operator<(Claim const& other) const {
            return byDefault != other.byDefault ? other.byDefault : command < other.command;
        }
    };
    std::map<std::uint32_t, std::set<Claim>> claims_;
    bool loaded_ = false;
};

} // namespace wainscot
