#include "tests/host_fixture.h"

#include "host/objects/glob_notices.h"

#include <map>
#include <random>

namespace wainscot {
namespace {

using Lifetimes = OneWindowTest;

/// Root, panel, target with a child, and a sibling of the target.
struct Scene {
    explicit Scene(RecordingParent* window) : root(window) {
        root->addChild(panel, BottomLeft(10, 10));
        panel->addChild(target, BottomLeft(10, 10));
        target->addChild(new ProbeGlob(20, 20), BottomLeft(2, 2));
        panel->addChild(sibling, BottomLeft(150, 10));
    }
    XY<int> place() const { return target->screenBox().centre(); }

    RecordingParent* root;
    ProbeGlob* panel = new ProbeGlob(300, 200);
    ProbeGlob* target = new ProbeGlob(100, 80);
    ProbeGlob* sibling = new ProbeGlob(50, 50);
};

/// What a handler of the target destroys.
struct {
    char const* name;
    Glob* (*of)(Glob* target);
} const victims[] = {{"itself", [](Glob* target) { return target; }},
                     {"parent", [](Glob* target) { return target->parent(); }},
                     {"root", [](Glob* target) { return Glob::getRootParent(target); }},
                     {"sibling", [](Glob* target) { return target->nextSibling(); }},
                     {"child", [](Glob* target) { return target->firstChild(); }}};

/// What makes a handler of the target run.
struct {
    std::string name;
    void (*trigger)(Driver& driver, Scene& scene);
} const ways[] = {
    {"press", [](Driver& d, Scene& s) { d.clickAt(s.place()); }},
    {"release", [](Driver& d, Scene& s) { d.clickAt(s.place()); }},
    {"move", [](Driver& d, Scene& s) { d.moveTo(s.place()); }},
    {"wheel", [](Driver& d, Scene& s) { d.wheelAt(s.place(), 1); }},
    {"key",
     [](Driver& d, Scene& s) {
         set_kbd_focus(s.target);
         d.key('A');
     }},
    {"timer",
     [](Driver& d, Scene& s) {
         s.target->setInterest(EventKind::timer);
         s.sibling->setInterest(EventKind::timer);
         d.advance(35);
     }},
    {"containment", [](Driver& d, Scene& s) { d.moveTo(s.place()); }},
    {"focus", [](Driver&, Scene& s) { set_kbd_focus(s.target); }},
    {"queued message",
     [](Driver&, Scene& s) {
         sendMessage("first", s.target, s.sibling);
         sendMessage("second", s.target, s.sibling);
         sendMessage("third", s.panel, s.target);
     }},
    {"direct message", [](Driver&, Scene& s) { EXPECT_TRUE(callMessage("now", s.target, s.sibling)); }},
    {"interception",
     [](Driver& d, Scene& s) {
         getEventInterceptStack().push(s.target, 1536);
         d.key('A');
     }},
    {"drawing", [](Driver&, Scene& s) { s.target->makeDirty(); }},
    {"resize", [](Driver&, Scene& s) { s.target->resize(30, 30); }},
};

/// Only the handler that the way names does the deed.
void prepare(ProbeGlob& target, std::string const& way, std::function<void()> const& deed) {
    auto const run = [=](char const* handler) {
        bool const isMeant = way.ends_with(handler);
        if (isMeant) deed();
        return isMeant;
    };
    target.onReact = [=, &target](Event const& event) {
        char const* const handler = mouse_down_event(event)    ? "press"
                                    : mouse_up_event(event)    ? "release"
                                    : mouse_move_event(event)  ? "move"
                                    : mouse_wheel_event(event) ? "wheel"
                                    : isKeyPressEvent(event)   ? "key"
                                    : isTimerEvent(event)      ? "timer"
                                                               : nullptr;
        if (!handler) return target.Glob::react(event);
        return run(handler) || (way == "release" && mouse_down_event(event));
    };
    target.onMessage = [=](auto const&, Glob*) { return run("message"), 1; };
    target.onContainment = [=](bool) { run("containment"); };
    target.onFocus = [=] { run("focus"); };
    target.onIntercept = [=](Event const&) { return run("interception"); };
    target.onDraw = [=] { run("drawing"); };
    target.onReshape = [=] { run("resize"); };
}

/// Any handler may destroy itself, its parent, its window, its sibling, its child: nobody finds the dead
/// afterwards, and all others go on.
TEST_F(Lifetimes, HandlersMayDestroyAnything) {
    for (auto const& way : ways)
        for (auto const& victim : victims) {
            SCOPED_TRACE(way.name + " " + victim.name);
            int const before = ProbeGlob::alive;
            Scene scene(openWindow());
            Glob* const doomed = victim.of(scene.target);
            Glob* const root = scene.root;
            IdStamp const stamp = doomed->idStamp(), rootStamp = root->idStamp();
            driver_.moveTo({0, 0});
            driver_.settle();
            prepare(*scene.target, way.name, [&victim, target = scene.target] { delete victim.of(target); });
            way.trigger(driver_, scene);
            driver_.settle();
            EXPECT_FALSE(EventHandler::valid(doomed, stamp));
            driver_.clickAt({230, 180});
            driver_.key('B');
            driver_.advance(50);
            if (EventHandler::valid(root, rootStamp)) delete root;
            driver_.settle();
            EXPECT_EQ(ProbeGlob::alive, before);
        }
}

TEST_F(Lifetimes, TheDeadAreGoneAtOnceButTheirMemoryStaysUntilTheHandlerReturns) {
    auto* const probe = addTo(root_, new ProbeGlob);
    IdStamp const stamp = probe->idStamp();
    int const before = ProbeGlob::alive;
    probe->onReact = [&, probe](Event const& event) {
        if (!mouse_down_event(event)) return false;
        delete probe;
        EXPECT_FALSE(is_good_glob_ptr(probe));
        EXPECT_FALSE(EventHandler::valid(probe, stamp));
        EXPECT_EQ(root_->numChildren(), 0u);
        EXPECT_EQ(ProbeGlob::alive, before) << "freed while its handler runs";
        delete probe;
        return true;
    };
    driver_.clickAt(probe->screenBox().centre());
    EXPECT_EQ(ProbeGlob::alive, before - 1);
}

TEST_F(Lifetimes, EveryFormOfDestructionIsTheSame) {
    int notices = 0;
    std::vector<NotifierSubscription> watches;
    auto const add = [&] {
        auto* const probe = addTo(root_, new ProbeGlob);
        watches.push_back(GlobNotices::watchDeletion(
            *probe, makeCallback<int, NotifyMsg>([&](NotifyMsg const&) { return ++notices; })));
        return probe;
    };
    delete add();
    destroy(add());
    EventHandler* const asHandler = add();
    delete asHandler;
    CanvasClient* const asClient = add();
    delete asClient;
    Glob* removed = add();
    root_->removeWidget(removed);
    EXPECT_EQ(removed, nullptr);
    root_->takeWidget(add());
    EXPECT_EQ(notices, 6);
    ProbeGlob* const kept = add();
    EXPECT_TRUE(is_good_glob_ptr(kept));
    destroy(nullptr);
    delete root_;
    EXPECT_EQ(notices, 7);
    EXPECT_FALSE(is_good_glob_ptr(kept));
    destroy(kept);
}

TEST_F(Lifetimes, NoticesComeBeforeAnythingIsTakenDown) {
    auto* const parent = addTo(root_, new ProbeGlob);
    auto* const child = addTo(parent, new ProbeGlob);
    NotifierSubscription watch;
    bool told = false;
    watch = GlobNotices::watchDeletion(*child, makeCallback<int, NotifyMsg>([&](NotifyMsg const& notice) {
        told = true;
        EXPECT_EQ(*unwrapData<Glob*>(notice.payload()), child);
        EXPECT_EQ(child->parent(), parent);
        EXPECT_TRUE(is_good_glob_ptr(child));
        watch.end();
        delete child;
        auto newcomer = std::make_unique<ProbeGlob>();
        EXPECT_FALSE(parent->addChild(newcomer.get())) << "the dying take nobody in";
        return 0;
    }));
    expectDiagnostic("tree operation refused");
    delete parent;
    EXPECT_TRUE(told);
    EXPECT_EQ(root_->numChildren(), 0u);
}

TEST_F(Lifetimes, SendersAndTargetsMayDieBeforeDelivery) {
    auto* const sender = addTo(root_, new ProbeGlob);
    auto* const target = addTo(root_, new ProbeGlob);
    struct Payload : Qv::InternalRefCount {
        explicit Payload(bool& flag) : gone(flag) {}
        ~Payload() override { gone = true; }
        bool& gone;
    };
    bool released = false;
    sendMessage("from the dead", root_, sender);
    sendMessageWithData("to the dead", target, Qv::Ptr<iObject>(new Payload(released)), root_);
    delete sender;
    delete target;
    driver_.settle();
    ASSERT_EQ(root_->messages().size(), 1u);
    EXPECT_EQ(root_->messages()[0].sender, nullptr);
    EXPECT_TRUE(released);
}

TEST_F(Lifetimes, ADeepTreeNeedsNoCallStack) {
    constexpr int depth = 200000;
    auto* chain = new Glob(4, 4);
    for (int i = 1; i < depth; ++i) {
        auto* const outer = new Glob(4, 4);
        outer->addChild(chain);
        chain = outer;
    }
    root_->addChild(chain);
    driver_.settle();
    driver_.clickAt(chain->screenBox().centre());
    driver_.key('A');
    std::size_t visited = 0;
    root_->visitPostOrder([&](Glob&) { return ++visited > 0; });
    EXPECT_EQ(visited, depth + 1u);
    delete root_->firstChild();
    EXPECT_EQ(root_->numChildren(), 0u);
}

TEST_F(Lifetimes, ConstructorsMayThrowAndDestructorsMayDeleteChildren) {
    struct Throws : ProbeGlob {
        Throws() {
            addChild(new ProbeGlob);
            setInterest(EventKind::timer);
            throw 1;
        }
    };
    struct Owner : ProbeGlob {
        Owner() : owned(new ProbeGlob) { addChild(owned.get()); }
        std::unique_ptr<ProbeGlob> owned;
    };
    int const before = ProbeGlob::alive;
    EXPECT_THROW(new Throws, int);
    EXPECT_EQ(ProbeGlob::alive, before);
    root_->addChild(new Owner);
    delete root_->firstChild();
    EXPECT_EQ(ProbeGlob::alive, before);
}

TEST_F(Lifetimes, RefusedAdoptionsChangeNothing) {
    expectDiagnostic("tree operation refused");
    expectDiagnostic("window refused");
    auto* const outer = addTo(root_, new ProbeGlob);
    auto* const inner = addTo(outer, new ProbeGlob);
    EXPECT_FALSE(root_->addChild(static_cast<Glob*>(nullptr)));
    EXPECT_FALSE(outer->addChild(outer));
    EXPECT_FALSE(inner->addChild(outer)) << "a cycle";
    EXPECT_FALSE(inner->addChild(root_)) << "a window";
    auto const loose = std::make_unique<ProbeGlob>();
    EXPECT_FALSE(root_->addWidgetRelative(loose.get(), inner, 4, WidgetRelativity::above)) << "not a sibling";
    EXPECT_FALSE(inner->reparentTo(nullptr));
    inner->setReparentable(false);
    EXPECT_FALSE(inner->reparentTo(root_));
    EXPECT_FALSE(host_->globManager().realize(inner));
    EXPECT_FALSE(host_->globManager().realize(nullptr));
    Glob* stranger = inner;
    root_->removeWidget(stranger);
    EXPECT_EQ(stranger, nullptr);
    EXPECT_EQ(inner->parent(), outer);
    EXPECT_EQ(root_->numChildren(), 1u);
}

TEST_F(Lifetimes, WhoeverSharesACanvasThatDiesDrawsOnItsParents) {
    auto* const owner = addTo(root_, new ProbeGlob);
    auto* const home = addTo(root_, new ProbeGlob(50, 50), BottomLeft(100, 100));
    auto const sharing = [&] {
        return std::make_unique<Glob>(static_cast<unsigned short>(10), static_cast<unsigned short>(10),
                                      Palette(), true, owner->canvas());
    };
    Glob* const moved = owner->addChild(sharing());
    home->addChild(moved);
    Glob* const inner = moved->addChild(sharing());
    std::unique_ptr<Glob> const nowhere = sharing();
    sharing().reset();
    owner->addChild(sharing());
    driver_.settle();
    delete owner;
    EXPECT_EQ(moved->canvas(), home->canvas());
    EXPECT_EQ(inner->canvas(), home->canvas());
    EXPECT_TRUE(nowhere->ownsCanvas());
    inner->makeDirty();
    Glib::UpdateDeferrer const deferrer(inner->canvas());
    EXPECT_EQ(inner->placeOnCanvas(), (XY<int>{0, 0}));
    std::unique_ptr<Glob> const taken = home->takeWidget(moved);
    delete home;
    EXPECT_TRUE(taken->ownsCanvas());
    EXPECT_EQ(inner->canvas(), taken->canvas());
}

/// Random changes of the tree against a plain model of parents and orders.
TEST_F(Lifetimes, RandomTreesMatchAModel) {
    expectDiagnostic("tree operation refused");
    std::mt19937 random(7);
    std::map<Glob*, std::vector<Glob*>> model{{root_, {}}};
    std::vector<Glob*> all{root_};
    auto const below = [&](std::size_t n) { return static_cast<int>(random() % n); };
    auto const any = [&] { return all[random() % all.size()]; };
    for (int step = 0; step < 4000; ++step) {
        if (step % 100 == 0) driver_.settle();
        Glob* const at = any();
        Glob* const from = at->parent();
        int const what = below(5);
        if (what < 2) {
            Glob* const added = at->addChild(new Glob(10, 10), BottomLeft(below(300), below(200)));
            model[at].push_back(added);
            model[added];
            all.push_back(added);
        } else if (at == root_) {
            continue;
        }
        if (what == 2) {
            Glob* const to = any();
            ASSERT_NE(at->reparentTo(to), to == at || Glob::isParentedTo(to, at)) << "cycle check";
        }
        if (what == 3) at->moveToTop();
        if (what == 3 || (what == 2 && at->parent() != from)) {
            std::erase(model[from], at);
            model[at->parent()].push_back(at);
        }
        if (what == 4 && below(3) == 0) {
            std::vector<Glob*> doomed;
            at->visitSubtree([&](Glob& glob) { return doomed.push_back(&glob), true; });
            std::erase(model[from], at);
            delete at;
            for (Glob* const dead : doomed) {
                model.erase(dead);
                std::erase(all, dead);
                EXPECT_FALSE(is_good_glob_ptr(dead));
            }
        }
    }
    for (auto const& [parent, children] : model) {
        std::vector<Glob*> found;
        parent->getChildren(found);
        EXPECT_EQ(found, children);
        EXPECT_EQ(parent->numChildren(), children.size());
        for (std::size_t i = 0; i < children.size(); ++i)
            EXPECT_EQ(parent->getWidget(static_cast<unsigned short>(i)), children[i]);
    }
}

} // namespace
} // namespace wainscot
