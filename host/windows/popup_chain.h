#pragma once

#include "host/objects/glob.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace wainscot {

/// The open pop-ups: the first was opened from a window, each other one from the pop-up before it. At most
/// one chain is open.
///
/// What a chain does for its pop-ups:
/// - Each stands on the intercept stack above `lowestPriority`, the latest highest: `intercept` gets every
///   key. A pop-up never takes the keyboard focus.
/// - A press outside the chain closes the chain; nobody else hears of that press, nor of its release.
/// - A press on the opener of the first pop-up reaches the opener. After the messages that the opener then
///   sends, the pop-ups of that chain that are still open are closed.
/// - A press on a pop-up goes there, and closes the pop-ups that other objects in that pop-up have opened.
///   Menus close their sub-menus themselves.
/// - Escape that no pop-up consumed closes the last pop-up. Deactivation of the application closes all, and
///   so does moving, resizing, hiding or destroying the window from which the chain was opened.
/// - When an opener moves or is hidden, what it has opened is closed.
/// - The death of a pop-up closes those that were opened from it.
///
/// A closed pop-up leaves the chain, and "poot" is called on it with itself as sender. It is destroyed when
/// it does not handle that.
class WAINSCOT_API PopUpChain {
public:
    /// Pop-ups stand above this on the intercept stack.
    static constexpr int lowestPriority = 1536;

    /// `setOutsidePresses` tells whether presses outside of all windows are wanted.
    explicit PopUpChain(std::function<void(bool)> setOutsidePresses);
    ~PopUpChain();
    PopUpChain(PopUpChain const&) = delete;
    PopUpChain& operator=(PopUpChain const&) = delete;

    /// Adds a pop-up. It continues the chain behind `parent`, or behind the pop-up in which `opener` lies;
    /// pop-ups that were opened from there before are closed. With neither, the open chain is closed and a
    /// new one begins. `owner` is the root of the window from which a new chain is opened. False when `popUp`
    /// was destroyed meanwhile.
    bool add(Glob& popUp, Glob* parent, Glob* opener, Glob* owner);
    /// The pop-up leaves the chain and stays open, and so do the pop-ups that were opened from it, unless
    /// they are closed first. Does nothing for an object that is not in the chain.
    void leave(Glob const& popUp);

    bool isOpen() const { return !links_.empty(); }
    std::size_t size() const { return links_.size(); }
    /// Whether a root is one of the chain's pop-ups.
    bool contains(Glob const* root) const;
    /// The same by the root's stamp.
    bool containsStamp(IdStamp root) const;
    /// The pop-up opened last; null when none is open.
    Glob* last() const;
    /// The pop-up before it; null for the first pop-up, and for objects that are not in the chain.
    Glob* parentOf(Glob const* popUp) const;
    /// The object whose press opened the first pop-up; null when there is none, or it has died.
    Glob* opener() const;

    /// Closes the whole chain; the pop-up that was opened last.
    void closeAll();
    void closeLast();
    /// Closes the pop-ups that were opened from a pop-up; does nothing when it is not in the chain.
    void closeBehind(Glob const& popUp);

    /// What becomes of a press.
    enum class Press {
        /// It goes to the object under the pointer.
        goesOn,
        /// The same, and `openerWasPressed()` has to be called when it has been delivered.
        reachesOpener,
        /// The chain has been closed by it: nobody hears of it.
        spent,
    };
    /// To be called for each first press, with the object under the pointer (null when there is none of the
    /// program's).
    Press press(Glob* under);
    void openerWasPressed();

    /// The window of the root was moved, resized, hidden or destroyed. Pop-ups that this closes are closed by
    /// the next message.
    void windowChanged(Glob const& root);
    void rootDying(Glob const& root);
    /// To be called when all layouts are done: closes what was opened by objects that have moved since, or
    /// are not shown any more.
    void checkOpeners();

private:
    class Keeper;
    struct Link {
        HandlerRef<Glob> popUp;
        HandlerRef<Glob> opener;
        /// Where the opener lay.
        XY<int> openerPlace;
        IdStamp intercept;

        bool hasOpenerGone() const;
    };

    std::size_t indexOf(Glob const* popUp) const;
    void closeFrom(std::size_t index);
    void closeFromLater(std::size_t index);
    static void close(Link const& link);
    Link take(std::size_t index);
    void begin(Glob* opener, Glob* owner);
    void endIfEmpty();

    std::function<void(bool)> setOutsidePresses_;
    std::vector<Link> links_;
    /// Hears Escape and postponed closings; lives while the chain is open.
    std::unique_ptr<Keeper> keeper_;
    HandlerRef<Glob> opener_;
    IdStamp owner_;
    /// The first pop-up when the opener was pressed.
    IdStamp pressedChain_;
    std::optional<std::size_t> closingFrom_;
};

} // namespace wainscot
