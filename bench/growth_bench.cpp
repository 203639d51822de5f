#include "bench/driving.h"
#include "foundation/standard_panel.h"
#include "foundation/tab_order_manager.h"
#include "host/drawing/path.h"
#include "host/events/event_system.h"
#include "host/events/filter_stack.h"
#include "host/events/keybinding_manager.h"
#include "host/objects/tree.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"
#include "host/windows/look.h"
#include "host/windows/modality_p.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

/// How the cost of n operations grows with n, for what was quadratic once or could become so. Each row is
/// measured at several n, in processor time, so that a busy neighbour does not bend the curve; a row whose
/// time grows faster than n to the power of 1.35 fails.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;

constexpr double mostExponent = 1.35;
/// A size that would take longer is left out.
constexpr double mostSeconds = 30;
/// Shorter runs are repeated, and the best one counts.
constexpr double shortSeconds = 1;
constexpr int repetitions = 5;
/// A smaller time says nothing about growth.
constexpr double leastSeconds = 0.0002;

/// The seconds of one run with n things.
using Row = double (*)(int n);

double processorSeconds(std::function<void()> const& work) {
    static SystemClock const clock;
    auto const start = clock.processor();
    work();
    return static_cast<double>(clock.processor() - start) / 1e6;
}

double bestOf(Row row, int n) {
    double best = row(n);
    for (int r = 1; r < repetitions && best < shortSeconds; ++r) best = std::min(best, row(n));
    return std::max(best, leastSeconds);
}

void grow(char const* what, int n, Row row) {
    Report line(std::string("growth: ") + what, n);
    double first = 0;
    double before = 0;
    double exponent = 0;
    for (int size = n / 8; size <= n; size *= 2) {
        double const seconds = bestOf(row, size);
        line.add("s_" + std::to_string(size), seconds);
        if (size == n / 8) first = seconds;
        exponent = std::log2(seconds / first) / std::max(std::log2(size / (n / 8.0)), 1.0);
        bool const nextIsTooLong = before > 0 && seconds * seconds / before > mostSeconds;
        if (nextIsTooLong) break;
        before = seconds;
    }
    line.add("exponent", exponent);
    line.print();
    check(exponent <= mostExponent, what);
}

LightweightString<char> commandName(int i) {
    return LightweightString<char>("command " + std::to_string(i));
}

constexpr std::uint32_t keyNumber(int i) {
    return 0x100u + static_cast<std::uint32_t>(i);
}

double assignKeys(int n) {
    auto const host = makeHost();
    auto& keys = KeybindingManager::instance();
    double const seconds = processorSeconds([&] {
        for (int i = 0; i < n; ++i) {
            keys.assignKey(keyNumber(i), commandName(i));
            check(keys.getCommandForKey(keyNumber(i)) == commandName(i), "the key has no command");
        }
    });
    return seconds;
}

double lookUpDefaultKeys(int n) {
    auto const host = makeHost();
    auto& keys = KeybindingManager::instance();
    return processorSeconds([&] {
        for (int i = 0; i < n; ++i) {
            keys.setDefaultKeys(commandName(i), {keyNumber(i)});
            check(keys.getCommandForKey(keyNumber(i)) == commandName(i), "the key has no command");
        }
    });
}

/// A parent whose grid over its children exists.
std::unique_ptr<Glob> makeParent(int n, unsigned short side, std::vector<Glob*>& children) {
    auto parent = std::make_unique<Glob>(4000, 4000);
    for (int i = 0; i < n; ++i) children.push_back(parent->addWidget(new Glob(side, side), 0, 0));
    // One child far away, so that a cell is smaller than a child.
    parent->addWidget(new Glob(10, 10), 3900, 3900);
    std::vector<Glob*> found;
    Tree::childrenMeeting(*parent, IntBox(0, 0, 1, 1), found);
    check(found.size() == static_cast<std::size_t>(n), "children are not found");
    return parent;
}

double removeNewestFirst(int n) {
    auto const host = makeHost();
    std::vector<Glob*> children;
    auto const parent = makeParent(n, 20, children);
    return processorSeconds([&] {
        for (auto child = children.rbegin(); child != children.rend(); ++child) parent->removeWidget(*child);
    });
}

double moveLargeChildren(int n) {
    auto const host = makeHost();
    std::vector<Glob*> children;
    auto const parent = makeParent(n, 3800, children);
    return processorSeconds([&] {
        for (auto child = children.rbegin(); child != children.rend(); ++child)
            parent->setWidgetPos(*child, {10, 10});
    });
}

double childrenByIndex(int n) {
    auto const host = makeHost();
    std::vector<Glob*> children;
    auto const parent = makeParent(n, 20, children);
    return processorSeconds([&] {
        for (int i = 0; i < n; ++i)
            check(parent->getWidget(static_cast<unsigned short>(i)) == children[static_cast<std::size_t>(i)],
                  "a wrong child");
    });
}

double pushAndPopIntercepts(int n) {
    auto const host = makeHost();
    auto const handler = std::make_unique<Glob>(10, 10);
    return processorSeconds([&] {
        std::vector<IdStamp> entries;
        for (int i = 0; i < n; ++i) entries.push_back(getEventInterceptStack().push(handler.get(), i % 7));
        for (IdStamp const entry : entries) check(getEventInterceptStack().pop(entry), "no such entry");
    });
}

/// n handlers have intercepts; some of the handlers die.
double dropInterceptsOfTheDead(int n) {
    auto const host = makeHost();
    std::vector<std::unique_ptr<Glob>> handlers;
    for (int i = 0; i < n; ++i) {
        handlers.push_back(std::make_unique<Glob>(10, 10));
        getEventInterceptStack().push(handlers.back().get(), 10);
    }
    double const seconds = processorSeconds([&] { handlers.clear(); });
    check(getEventInterceptStack().size() == 0, "entries are left");
    return seconds;
}

double offerKey(int n) {
    auto const host = makeHost();
    auto const handler = std::make_unique<Glob>(10, 10);
    for (int i = 0; i < n; ++i) getEventInterceptStack().push(handler.get(), 10);
    Event const event(EventKind::keyPress);
    int asked = 0;
    double const seconds = processorSeconds([&] {
        for (int key = 0; key < 8; ++key)
            getEventInterceptStack().offer(event, [&](EventHandler&) { return ++asked > 0; });
    });
    check(asked == 8 * n, "not everybody was asked");
    return seconds;
}

double setModalContexts(int n) {
    auto const host = makeHost();
    auto& windows = GlobManager::instance();
    std::vector<std::unique_ptr<Glob>> globs;
    for (int i = 0; i <= n; ++i) globs.push_back(std::make_unique<Glob>(10, 10));
    return processorSeconds([&] {
        for (int i = 0; i < n; ++i) {
            auto const at = static_cast<std::size_t>(i);
            windows.setModalContextGlob(globs[at].get(), globs[at + 1].get());
            check(!windows.modality().blockerOf(*globs[at]), "blocked by nobody");
        }
        for (int i = 0; i < n; ++i) windows.unsetModalContextGlob(globs[static_cast<std::size_t>(i)].get());
    });
}

double addEventHandlers(int n) {
    auto const host = makeHost();
    auto const told = std::make_unique<Glob>(10, 10);
    std::vector<std::unique_ptr<Glob>> handlers;
    for (int i = 0; i < n; ++i) handlers.push_back(std::make_unique<Glob>(10, 10));
    return processorSeconds([&] {
        for (int i = 0; i < n; ++i)
            told->addEventHandler(handlers[static_cast<std::size_t>(i)].get(), (i + 1) << 8);
        for (int i = 0; i < n; ++i) told->removeEventHandler((i + 1) << 8);
    });
}

double addStatusWidgets(int n) {
    auto const host = makeHost();
    auto const panel = std::make_unique<StandardPanel>(400, 300);
    return processorSeconds([&] {
        for (int i = 0; i < n; ++i) check(panel->addStatusWidget(new Glob(2, 10), 0), "refused");
    });
}

double savePaths(int n) {
    auto const host = makeHost();
    return processorSeconds([&] {
        glib_newpath();
        for (int i = 0; i < n; ++i) {
            glib_lineto(i, i);
            glib_gsave();
        }
        for (int i = 0; i < n; ++i) glib_grestore();
    });
}

class Stop final : public TabOrderable {
public:
    bool isTabStopActive() override { return true; }
};

double leaveTabManagers(int n) {
    std::vector<std::unique_ptr<TabOrderManager>> managers;
    auto stop = std::make_unique<Stop>();
    for (int i = 0; i < n; ++i) {
        managers.push_back(std::make_unique<TabOrderManager>(false));
        managers.back()->addTabStop(*stop);
    }
    return processorSeconds([&] { stop.reset(); });
}

Glob* addChain(Glob* parent, int n) {
    for (int i = 0; i < n; ++i) parent = parent->addWidget(new Glob(10, 10), 0, 0);
    return parent;
}

double addAtDepth(int n) {
    auto const host = makeHost();
    auto const top = std::make_unique<Glob>(10, 10);
    return processorSeconds([&] { addChain(top.get(), n); });
}

double changeThemeAtDepth(int n) {
    auto const host = makeHost();
    auto* const top = new Glob(100, 100);
    addChain(top, n);
    GlobManager::instance().realize(top);
    host->loop().settle();
    double const seconds = processorSeconds([&] {
        Look::setTheme(Palette::currentTheme() == eThemeDark ? eThemeLight : eThemeDark);
        host->loop().settle();
    });
    Palette::setCurrentTheme(eThemeDark);
    return seconds;
}

std::vector<Glob*> openWindows(Host& host, int n) {
    std::vector<Glob*> roots;
    for (int i = 0; i < n; ++i) {
        roots.push_back(new Glob(8, 8));
        host.globManager().realize(roots.back());
    }
    return roots;
}

double openAndCloseWindows(int n) {
    auto const host = makeHost();
    double const seconds = processorSeconds([&] {
        std::vector<Glob*> const roots = openWindows(*host, n);
        host->loop().settle();
        for (Glob* root : roots) destroy(root);
        host->loop().settle();
    });
    check(host->globManager().numWindows() == 0, "windows are left");
    return seconds;
}

/// Damages n windows one after the other, with a turn of the loop for each.
double damageWindows(int n) {
    auto const host = makeHost();
    std::vector<Glob*> const roots = openWindows(*host, n);
    host->loop().settle();
    return processorSeconds([&] {
        for (Glob* root : roots) {
            root->makeDirty();
            host->loop().turn();
        }
    });
}

} // namespace

int main(int count, char** names) {
    return runWorkloads(
        count, names,
        {{"keys", [] { grow("key bindings assigned", 10000, assignKeys); }},
         {"keys", [] { grow("setDefaultKeys and a look-up", 10000, lookUpDefaultKeys); }},
         {"children", [] { grow("children of one place removed, newest first", 200000, removeNewestFirst); }},
         {"children", [] { grow("large children moved", 200000, moveLargeChildren); }},
         {"children", [] { grow("getWidget(i) for all i", 60000, childrenByIndex); }},
         {"intercepts", [] { grow("intercepts pushed and popped", 200000, pushAndPopIntercepts); }},
         {"intercepts", [] { grow("handlers with intercepts die", 20000, dropInterceptsOfTheDead); }},
         {"intercepts", [] { grow("a key offered to n intercepts", 20000, offerKey); }},
         {"modal", [] { grow("modal contexts", 20000, setModalContexts); }},
         {"handlers", [] { grow("event handlers of one object", 20000, addEventHandlers); }},
         {"status", [] { grow("status widgets", 20000, addStatusWidgets); }},
         {"paths", [] { grow("glib_gsave over a growing path", 20000, savePaths); }},
         {"taborder", [] { grow("one control in n tab managers dies", 200000, leaveTabManagers); }},
         {"depth", [] { grow("children added at depth n from above", 20000, addAtDepth); }},
         {"depth", [] { grow("theme change at depth n", 100000, changeThemeAtDepth); }},
         {"windows", [] { grow("n windows opened and closed", 20000, openAndCloseWindows); }},
         {"windows", [] { grow("one of n windows damaged", 2000, damageWindows); }}});
}
