#pragma once

#include "host/base/ptr.h"
#include "host/services/ui_string.h"

#include <functional>
#include <map>
#include <vector>

namespace wainscot {

namespace Cmd {

/// What a command is told when it is called.
struct Context {
    /// Free for the caller, for example a value that a script gives.
    LightweightString<wchar_t> argument;
    Qv::Ptr<iObject> data;
};

using Function = std::function<void(Context const&)>;

} // namespace Cmd

/// One command of the program.
class WAINSCOT_API CommandMapRec {
public:
    CommandMapRec(LightweightString<char> name, UIString displayName, Cmd::Function function,
                  bool isTransport)
        : name_(std::move(name)), displayName_(std::move(displayName)), function_(std::move(function)),
          isTransport_(isTransport) {}

    /// The name by which the command is found and keys are bound to it.
    LightweightString<char> const& name() const { return name_; }
    /// For people, in their language.
    LightweightString<wchar_t> displayName() const { return displayName_.text(); }
    /// Its keys come before the holder of the keyboard focus, unless the holder takes text or a pop-up is
    /// open.
    bool isTransport() const { return isTransport_; }
    Cmd::Function const& function() const { return function_; }

private:
    LightweightString<char> name_;
    UIString displayName_;
    Cmd::Function function_;
    bool isTransport_;
};

/// The commands that the program has at the moment, by number and by name. One map belongs to the live host.
/// User-interface thread only.
class WAINSCOT_API CommandMap {
public:
    /// The number of no command.
    static constexpr unsigned long none = 0xFFFFFFFF;

    /// Becomes the live map. Throws when another one lives.
    CommandMap();
    ~CommandMap();
    CommandMap(CommandMap const&) = delete;
    CommandMap& operator=(CommandMap const&) = delete;

    /// Null while no host lives.
    static CommandMap* current();
    /// Throws when no host lives.
    static CommandMap& instance();

    /// The number of the command of that name; `none` when there is no such command.
    unsigned long findCommand(char const* name) const;
    /// Null when there is no such command (any more).
    CommandMapRec const* getCommand(unsigned long number) const;
    /// Runs a command; false when the number is unknown. Exceptions pass to the caller. The command may
    /// remove itself and other commands.
    bool callCommand(unsigned long number, Cmd::Context const& context);
    /// All commands, in the order of their names.
    std::vector<CommandMapRec const*> commands() const;

    /// Gives the number of the new command. `none`, and nothing is done, when the name is empty or taken, or
    /// when there is no function. Numbers are never used again.
    unsigned long add(CommandMapRec command);
    void remove(unsigned long number);

private:
    std::map<unsigned long, CommandMapRec> commands_;
    std::map<LightweightString<char>, unsigned long> numbers_;
};

/// Adds a command to the live map for as long as this object lives. Needs a live host, which may end first.
class WAINSCOT_API CommandRegistrar {
public:
    enum class Kind : unsigned char { ordinary, transport };

    CommandRegistrar(char const* name, UIString displayName, Cmd::Function function,
                     Kind kind = Kind::ordinary);
    ~CommandRegistrar();
    CommandRegistrar(CommandRegistrar const&) = delete;
    CommandRegistrar& operator=(CommandRegistrar const&) = delete;

    /// `CommandMap::none` when the command was refused.
    unsigned long number() const { return number_; }

private:
    unsigned long number_;
};

} // namespace wainscot
