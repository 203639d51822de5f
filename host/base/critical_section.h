#pragma once

#include <mutex>

namespace wainscot {

/// A lock that the thread holding it may enter again.
class CriticalSection {
public:
    void enter() { mutex_.lock(); }
    void leave() { mutex_.unlock(); }

private:
    std::recursive_mutex mutex_;
};

/// Holds a critical section for a scope.
class CriticalSectionLock {
public:
    explicit CriticalSectionLock(CriticalSection& section) : section_(section) { section_.enter(); }
    ~CriticalSectionLock() { section_.leave(); }
    CriticalSectionLock(CriticalSectionLock const&) = delete;
    CriticalSectionLock& operator=(CriticalSectionLock const&) = delete;

private:
    CriticalSection& section_;
};

} // namespace wainscot
