#pragma once

#include <exception>
#include <utility>

namespace wainscot {

/// Runs all steps although one of them throws; `rethrow` then throws the first exception.
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
