#pragma once

#include "foundation/standard_panel.h"
#include "gallery/label_glob.h"
#include "gallery/page.h"

namespace wainscot::gallery {

/// A page that says what the labels on it report.
class LabelPage : public StandardPanel {
public:
    LabelPage(XY<int> size, LogLine log);

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override;

private:
    LogLine log_;
};

} // namespace wainscot::gallery
