#include "host/services/command_map.h"

#include "host/base/diagnostics.h"

#include <stdexcept>
#include <string>

namespace wainscot {

namespace {
constinit CommandMap* liveMap = nullptr;
/// Never starts again, so that a number of an earlier host's map means nothing in this one.
constinit unsigned long nextNumber = 1;
} // namespace

CommandMap::CommandMap() {
    if (liveMap) throw std::logic_error("wainscot: only one host may live at a time");
    liveMap = this;
}

CommandMap::~CommandMap() {
    liveMap = nullptr;
}

CommandMap* CommandMap::current() {
    return liveMap;
}

CommandMap& CommandMap::instance() {
    if (!liveMap) throw std::logic_error("wainscot: no host lives");
    return *liveMap;
}

unsigned long CommandMap::findCommand(char const* name) const {
    auto const found = numbers_.find(LightweightString<char>(name));
    return found == numbers_.end() ? none : found->second;
}

CommandMapRec const* CommandMap::getCommand(unsigned long number) const {
    auto const found = commands_.find(number);
    return found == commands_.end() ? nullptr : &found->second;
}

bool CommandMap::callCommand(unsigned long number, Cmd::Context const& context) {
    CommandMapRec const* const command = getCommand(number);
    if (!command) {
        Diagnostics::count("unknown command", std::to_string(number).c_str());
        return false;
    }
    Cmd::Function const function = command->function();
    function(context);
    return true;
}

std::vector<CommandMapRec const*> CommandMap::commands() const {
    std::vector<CommandMapRec const*> all;
    for (auto const& [name, number] : numbers_) all.push_back(getCommand(number));
    return all;
}

unsigned long CommandMap::add(CommandMapRec command) {
    LightweightString<char> const name = command.name();
    if (name.empty() || !command.function() || numbers_.count(name) != 0) {
        Diagnostics::count("command refused", name.c_str());
        return none;
    }
    if (nextNumber == none) ++nextNumber;
    unsigned long const number = nextNumber++;
    numbers_.emplace(name, number);
    commands_.emplace(number, std::move(command));
    return number;
}

void CommandMap::remove(unsigned long number) {
    auto const found = commands_.find(number);
    if (found == commands_.end()) return;
    numbers_.erase(found->second.name());
    commands_.erase(found);
}

CommandRegistrar::CommandRegistrar(char const* name, UIString displayName, Cmd::Function function, Kind kind)
    : number_(CommandMap::instance().add(CommandMapRec(LightweightString<char>(name), std::move(displayName),
                                                       std::move(function), kind == Kind::transport))) {}

CommandRegistrar::~CommandRegistrar() {
    if (CommandMap* const map = CommandMap::current()) map->remove(number_);
}

} // namespace wainscot
