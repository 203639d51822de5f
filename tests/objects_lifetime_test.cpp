#include "tests/host_fixture.h"

#include "host/objects/glob_notices.h"

#include <map>
#include <random>

namespace wainscot {
namespace {

using Lifetimes = OneWindowTest;

/// What a handler destroys.
enum class Victim { self, parent, root, sibling, child };

Glob* choose(Victim victim, Glob* self) {
    switch (victim) {
    case Victim::self:
        return self;
    case Victim::parent:
        return self->parent();
    case Victim::root:
        return Glob::getRootParent(self);
    case Victim::sibling:
        return self->nextSibling();
    case Victim::child:
        return self->firstChild();
    }
    return nullptr;
}

/// Root, panel, target with a child, and a sibling of the target.
struct Scene {
    RecordingParent* root;
    ProbeGlob* panel;
    ProbeGlob* target;
    ProbeGlob* child;
    ProbeGlob* sibling;
};

Scene makeScene(RecordingParent* root) {
    Scene scene{root, new ProbeGlob(300, 200), new ProbeGlob(100, 80), new ProbeGlob(20, 20),
                new ProbeGlob(50, 50)};
    root->addChild(scene.panel, BottomLeft(10, 10));
    scene.panel->addChild(scene.target, BottomLeft(10, 10));
    scene.target->addChild(scene.child, BottomLeft(2, 2));
    scene.panel->addChild(scene.sibling, BottomLeft(150, 10));
    return scene;
}

using Deed = std::function<void()>;

struct Way {
    char const* name;
    /// Sets the handler that does it.
    std::function<void(ProbeGlob& target, Deed const& deed)> prepare;
    /// Makes it run.
    std::function<void(Driver& driver, Scene& scene)> trigger;
};

auto inEvents(bool (*wanted)(Event const&)) {
    return [wanted](ProbeGlob& target, Deed const& deed) {
        target.onReact = [wanted, deed](Event const& event) {
            if (wanted(event)) deed();
            return wanted(event);
        };
    };
}
void inMessages(ProbeGlob& target, Deed const& deed) {
    target.onMessage = [deed](auto const&, Glob*) {
        deed();
        return 1;
    };
}
void click(Driver& driver, Scene& scene) {
    driver.clickAt(scene.target->screenBox().centre());
}
void point(Driver& driver, Scene& scene) {
    driver.moveTo(scene.target->screenBox().centre());
}

Way const ways[] = {
    {"press", inEvents(mouse_down_event), click},
    {"release", inEvents(mouse_up_event),
     [](Driver& d, Scene& s) {
         s.target->onReact = [inner = s.target->onReact](Event const& e) {
             return inner(e) || mouse_down_event(e);
         };
         click(d, s);
     }},
    {"move", inEvents(mouse_move_event), point},
    {"wheel", inEvents(mouse_wheel_event),
     [](Driver& d, Scene& s) { d.wheelAt(s.target->screenBox().centre(), 1); }},
    {"key", inEvents(isKeyPressEvent),
     [](Driver& d, Scene& s) {
         set_kbd_focus(s.target);
         d.key('A');
     }},
    {"timer", inEvents(isTimerEvent),
     [](Driver& d, Scene& s) {
         s.target->setInterest(EventKind::timer);
         s.sibling->setInterest(EventKind::timer);
         d.advance(35);
     }},
    {"containment", [](ProbeGlob& t, Deed const& deed) { t.onContainment = [deed](bool) { deed(); }; },
     point},
    {"focus", [](ProbeGlob& t, Deed const& deed) { t.onFocus = deed; },
     [](Driver&, Scene& s) { set_kbd_focus(s.target); }},
    {"queued message", inMessages,
     [](Driver&, Scene& s) {
         sendMessage("first", s.target, s.sibling);
         sendMessage("second", s.target, s.sibling);
         sendMessage("third", s.panel, s.target);
     }},
    {"direct message", inMessages,
     [](Driver&, Scene& s) { EXPECT_TRUE(callMessage("now", s.target, s.sibling)); }},
    {"interception",
     [](ProbeGlob& t, Deed const& deed) {
         t.onIntercept = [deed](Event const&) {
             deed();
             return true;
         };
     },
     [](Driver& d, Scene& s) {
         getEventInterceptStack().push(s.target, 1536);
         d.key('A');
     }},
    {"drawing", [](ProbeGlob& t, Deed const& deed) { t.onDraw = deed; },
     [](Driver&, Scene& s) { s.target->makeDirty(); }},
    {"resize", [](ProbeGlob& t, Deed const& deed) { t.onReshape = deed; },
     [](Driver&, Scene& s) { s.target->resize(30, 30); }},
};

/// Any handler may destroy itself, its parent, its window, its sibling, its child: nobody finds the dead
/// afterwards, and all others go on.
TEST_F(Lifetimes, HandlersMayDestroyAnything) {
    for (Way const& way : ways) {
        for (Victim victim : {Victim::self, Victim::parent, Victim::root, Victim::sibling, Victim::child}) {
            SCOPED_TRACE(std::string(way.name) + " " + std::to_string(static_cast<int>(victim)));
            int const before = ProbeGlob::alive;
            Scene scene = makeScene(openWindow());
            Glob* const doomed = choose(victim, scene.target);
            IdStamp const stamp = doomed->idStamp();
            Glob* const root = scene.root;
            IdStamp const rootStamp = root->idStamp();
            driver_.moveTo({0, 0});
            driver_.settle();
            way.prepare(*scene.target, [victim, target = scene.target] { delete choose(victim, target); });
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

TEST_F(Lifetimes, AnObjectWhoseConstructorThrowsLeavesNothingBehind) {
    struct Throws : ProbeGlob {
        Throws() {
            addChild(new ProbeGlob);
            setInterest(EventKind::timer);
            throw 1;
        }
    };
    int const before = ProbeGlob::alive;
    EXPECT_THROW(new Throws, int);
    EXPECT_EQ(ProbeGlob::alive, before);
}

TEST_F(Lifetimes, AParentsDestructorMayDeleteItsOwnChildren) {
    struct Owner : ProbeGlob {
        Owner() : owned(new ProbeGlob) { addChild(owned.get()); }
        std::unique_ptr<ProbeGlob> owned;
    };
    int const before = ProbeGlob::alive;
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
    auto const isBelow = [](Glob* glob, Glob* above) {
        return glob == above || Glob::isParentedTo(glob, above);
    };
    for (int step = 0; step < 4000; ++step) {
        Glob* const at = all[random() % all.size()];
        switch (random() % 5) {
        case 0:
        case 1: {
            auto* const added = new Glob(10, 10);
            at->addChild(added,
                         BottomLeft(static_cast<int>(random() % 300), static_cast<int>(random() % 200)));
            model[at].push_back(added);
            model[added];
            all.push_back(added);
            break;
        }
        case 2: {
            Glob* const to = all[random() % all.size()];
            if (at == root_) break;
            Glob* const from = at->parent();
            if (at->reparentTo(to) == isBelow(to, at)) FAIL() << "cycle check";
            if (at->parent() != from) {
                std::erase(model[from], at);
                model[at->parent()].push_back(at);
            }
            break;
        }
        case 3: {
            if (at == root_) break;
            auto& siblings = model[at->parent()];
            std::erase(siblings, at);
            siblings.push_back(at);
            at->moveToTop();
            break;
        }
        default: {
            if (at == root_ || random() % 3 != 0) break;
            std::erase(model[at->parent()], at);
            std::vector<Glob*> doomed;
            at->visitSubtree([&](Glob& glob) {
                doomed.push_back(&glob);
                return true;
            });
            delete at;
            for (Glob* dead : doomed) {
                model.erase(dead);
                std::erase(all, dead);
                EXPECT_FALSE(is_good_glob_ptr(dead));
            }
        }
        }
        if (step % 100 == 0) driver_.settle();
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
