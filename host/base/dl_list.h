#pragma once

namespace wainscot {

template <class T>
class DLList;

/// The place of an object in a `DLList<T>`; `T` derives from it. An object leaves its list before it dies.
template <class T>
class DLLink {
public:
    DLLink() = default;
    DLLink(DLLink const&) {}
    DLLink& operator=(DLLink const&) { return *this; }

private:
    friend class DLList<T>;
    DLLink* previous_ = nullptr;
    DLLink* next_ = nullptr;
};

/// A doubly linked list of objects that it does not own. It may be changed while it is walked: objects added
/// in a walk are not visited by it, removed objects are never visited. Adding and removing take constant time
/// and no memory.
template <class T>
class DLList {
public:
    DLList() = default;
    DLList(DLList const&) = delete;
    DLList& operator=(DLList const&) = delete;

    bool empty() const { return !first_; }
    T* first() const { return static_cast<T*>(first_); }

    /// Appends an object that is in no list.
    void append(T& object) {
        DLLink<T>& link = object;
        link.previous_ = last_;
        link.next_ = nullptr;
        (last_ ? last_->next_ : first_) = &link;
        last_ = &link;
    }

    /// Takes out an object of this list.
    void remove(T& object) {
        DLLink<T>& link = object;
        for (Walk* walk = walks_; walk; walk = walk->outer_) walk->skip(link);
        (link.previous_ ? link.previous_->next_ : first_) = link.next_;
        (link.next_ ? link.next_->previous_ : last_) = link.previous_;
        link.previous_ = link.next_ = nullptr;
    }

    /// One walk over the objects that are in the list now. Walks of one list may be nested; they end in
    /// reverse order.
    class Walk {
    public:
        explicit Walk(DLList& list)
            : list_(list), outer_(list.walks_), next_(list.first_), last_(list.last_) {
            list.walks_ = this;
        }
        ~Walk() { list_.walks_ = outer_; }
        Walk(Walk const&) = delete;
        Walk& operator=(Walk const&) = delete;

        /// The next object; null at the end.
        T* next() {
            DLLink<T>* const current = next_;
            if (!current) return nullptr;
            next_ = current == last_ ? nullptr : current->next_;
            return static_cast<T*>(current);
        }

    private:
        friend class DLList;

        /// `link` is about to leave: the walk goes on, and ends, without it.
        void skip(DLLink<T>& link) {
            if (next_ == &link)
                next_ = last_ == &link ? nullptr : link.next_;
            else if (last_ == &link)
                last_ = link.previous_;
        }

        DLList& list_;
        Walk* outer_;
        DLLink<T>* next_;
        DLLink<T>* last_;
    };

private:
    DLLink<T>* first_ = nullptr;
    DLLink<T>* last_ = nullptr;
    Walk* walks_ = nullptr;
};

} // namespace wainscot
