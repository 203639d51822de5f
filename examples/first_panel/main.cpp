#include "buttons/button.h"
#include "driver/driver.h"
#include "foundation/rect.h"
#include "host/services/text_ids.h"
#include "host/start/host.h"
#include "host/windows/glob_manager.h"

#include <cstdio>
#include <string_view>

namespace {

using namespace wainscot;

/// A ground with two buttons, which tells what they report.
class FirstPanel final : public rect {
public:
    static constexpr LightweightString<char> importMsg{"import"};

    FirstPanel() : rect(240, 120) {
        addChild(std::make_unique<Button>(L"Import", importMsg, GlobCreationInfo(100, 30)),
                 {CoordinateOrigin::bottomLeft, {10, 10}});
        addChild(std::make_unique<Button>(UIString(TextId::close), pootMsg, GlobCreationInfo(100, 30)),
                 {CoordinateOrigin::bottomRight, {10, 10}});
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (name == importMsg) {
            std::printf("heard: %s\n", name.c_str());
            return 1;
        }
        if (name != pootMsg) return rect::handleMessageEvent(name, sender);
        // The last statement: it is gone then.
        destroy(this);
        return 1;
    }
};

/// Presses the buttons as a person would, without a screen.
int pressAll(Host& host, FirstPanel* panel) {
    Driver driver(host);
    driver.settle();
    Glob* const close = panel->lastChild();
    std::printf("labels: %s\n", driver.tree().c_str());
    bool const pressed =
        driver.click(driver.button(L"Import")) && driver.painted(panel) && driver.click(close);
    if (!pressed) std::printf("problem: %s\n", driver.problem().c_str());
    std::printf("windows: %zu\n", host.globManager().numWindows());
    return pressed ? 0 : 1;
}

} // namespace

/// A first window; with --check it needs no screen, and tries itself.
int main(int count, char** words) {
    bool const isCheck = count > 1 && std::string_view(words[1]) == "--check";
    HostSettings settings;
    settings.name = "first_panel";
    if (isCheck) settings.screen = HostSettings::Screen::offscreen;
    Host host(count, words, settings);
    auto* const panel = new FirstPanel;
    if (!GlobManager::instance().realize(panel)) return 1;
    GlobManager::instance().setWindowTitle(*panel, L"First panel");
    return isCheck ? pressAll(host, panel) : host.run();
}
