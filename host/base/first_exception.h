#pragma once

#include <exception>
#include <utility>

namespace wainscot {

/// For steps that are all to be done although one of them throws: the first exception goes on at the end.
class FirstException {
public:
    template <class Step>
    void run(Step&& step) {
        try {
            step();
        } catch (...) {
            if (!first_) first_ = std::current_exception();
        }
    }
    bool any() const { return first_ != nullptr; }
    /// Nothing when no step has thrown.
    void rethrow() {
        if (first_) std::rethrow_exception(std::exchange(first_, nullptr));
    }

private:
    std::exception_ptr first_;
};

} // namespace wainscot
