#include "host/windows/key_commands_p.h"

#include "host/events/keybinding_manager.h"
#include "host/services/clipboard.h"
#include "host/services/command_map.h"
#include "host/windows/glob_manager.h"
#include "host/windows/popup_chain.h"

namespace wainscot {

namespace {

/// The number of the command that a key runs; `CommandMap::none` when it runs none.
unsigned long boundCommand(std::uint32_t key) {
    LightweightString<char> const command = KeybindingManager::instance().getCommandForKey(key);
    return command.empty() ? CommandMap::none : CommandMap::instance().findCommand(command.c_str());
}

} // namespace

bool KeyCommands::runTransport(Event const& key, Glob const* holder, GlobManager const& windows) {
    if (!isKeyPressEvent(key)) return false;
    if (windows.popUps().isOpen() || (holder && holder->textCaret())) return false;
    unsigned long const number = boundCommand(key.keyCode());
    CommandMapRec const* const known = CommandMap::instance().getCommand(number);
    if (!known || !known->isTransport()) return false;
    CommandMap::instance().callCommand(number, Cmd::Context());
    return true;
}

bool KeyCommands::runBound(std::uint32_t key) {
    unsigned long const number = boundCommand(key);
    if (number == CommandMap::none) return false;
    CommandMap::instance().callCommand(number, Cmd::Context());
    return true;
}

bool KeyCommands::sendClipboardMessage(std::uint32_t key, Glob* holder) {
    LightweightString<char> const* const message = key == (Key::ctrl | 'X')   ? &WindowsClipboard::cutTextMsg
                                                   : key == (Key::ctrl | 'C') ? &WindowsClipboard::copyTextMsg
                                                   : key == (Key::ctrl | 'V')
                                                       ? &WindowsClipboard::pasteTextMsg
                                                       : nullptr;
    Glob* glob = message ? holder : nullptr;
    while (glob) {
        LifeGuard const life = glob->guard();
        bool const isTaken = glob->handleMessageEvent(*message, nullptr) != 0;
        if (isTaken || !life.alive()) return true;
        glob = glob->parent();
    }
    return false;
}

} // namespace wainscot
