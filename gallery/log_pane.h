#pragma once

#include "buttons/button.h"
#include "foundation/label.h"
#include "foundation/standard_panel.h"
#include "gallery/message_log.h"

namespace wainscot::gallery {

/// The log, with buttons that pause and clear it.
class LogPane final : public StandardPanel {
public:
    LogPane();

    void add(LightweightString<wchar_t> const& line);
    MessageLog& log() { return *log_; }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;

private:
    static constexpr LightweightString<char> pauseMsg{"pause"};
    static constexpr LightweightString<char> clearMsg{"clear"};

    Button* makeButton(wchar_t const* label, LightweightString<char> const& message);
    void showCount();

    MessageLog* log_;
    Label* caption_;
    Button* pause_;
};

} // namespace wainscot::gallery
