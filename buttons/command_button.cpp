#include "buttons/command_button.h"

#include "host/base/convert.h"
#include "host/events/key_names.h"
#include "host/events/keybinding_manager.h"
#include "host/objects/tooltip_details.h"
#include "host/services/command_map.h"

namespace wainscot {

namespace {

CommandMapRec const* findRecord(LightweightString<char> const& command) {
    CommandMap* const map = CommandMap::current();
    return map ? map->getCommand(map->findCommand(command.c_str())) : nullptr;
}

UIString labelFor(LightweightString<char> const& command, UIString const& label) {
    CommandMapRec const* const record = label.isEmpty() ? findRecord(command) : nullptr;
    return record ? UIString(record->displayName()) : label;
}

} // namespace

int CommandExecuter::call(NotifyMsg const&) {
    CommandMap* const map = CommandMap::current();
    return map && map->callCommand(map->findCommand(command_.c_str()), Cmd::Context()) ? 1 : 0;
}

CommandButton::CommandButton(LightweightString<char> const& command, unsigned short width,
                             unsigned short height, UIString const& label)
    : Button(labelFor(command, label), command.c_str(), width, height), command_(command) {
    setCallback(WidgetCallback(WidgetCallback::Callback(new CommandExecuter(command)), command));
}

bool CommandButton::getTooltipDetails(XY<int> const& place, TooltipDetails& details) const {
    bool const hasOwn = Button::getTooltipDetails(place, details);
    std::vector<std::uint32_t> const keys =
        KeybindingManager::instance().getKeysAssignedToCommand(command_.c_str());
    if (keys.empty()) return hasOwn;
    LightweightString<wchar_t> names;
    for (std::uint32_t const key : keys)
        names = names + (names.isEmpty() ? L"" : L", ") + fromUTF8(keyToString(key));
    if (!hasOwn) {
        CommandMapRec const* const record = findRecord(command_);
        details.text = record ? UIString(record->displayName()) : getString();
        details.area = bounds();
    }
    details.more = UIString(names);
    return true;
}

} // namespace wainscot
