#include "host/events/dispatch_scope.h"

#include "host/base/diagnostics.h"
#include "host/events/event.h"

#include <exception>
#include <vector>

namespace wainscot {

namespace {

struct Dead {
    DispatchScope::Free free;
    void* object;
};

constinit int depth = 0;
constinit std::uint32_t modifiersInForce = 0;
constinit int codeInForce = 0;
constinit std::vector<Dead>* waiting = nullptr;

/// Destructors may destroy more objects, which join the end of the list.
void freeTheDead() {
    if (!waiting) return;
    for (std::size_t i = 0; i < waiting->size(); ++i) {
        Dead const dead = (*waiting)[i];
        dead.free(dead.object);
    }
    delete waiting;
    waiting = nullptr;
}

} // namespace

DispatchScope::DispatchScope() : outerModifiers_(modifiersInForce), outerCode_(codeInForce) {
    ++depth;
}

DispatchScope::DispatchScope(Event const& event) : DispatchScope() {
    modifiersInForce = event.modifiers();
    codeInForce = event.reportCode();
}

DispatchScope::~DispatchScope() {
    modifiersInForce = outerModifiers_;
    codeInForce = outerCode_;
    if (depth == 1) freeTheDead();
    --depth;
}

bool DispatchScope::isActive() {
    return depth > 0;
}

void DispatchScope::freeWhenUnwound(Free free, void* object) {
    if (!waiting) waiting = new std::vector<Dead>;
    waiting->push_back({free, object});
    if (depth > 0) return;
    DispatchScope const unwinding;
}

std::uint32_t currentModifiers() {
    return modifiersInForce;
}

int currentReportCode() {
    return codeInForce;
}

void reportHandlerException(char const* where) {
    try {
        throw;
    } catch (std::exception const& problem) {
        Diagnostics::count("exception in handler", problem.what());
        LogBoth("wainscot: exception in %s: %s", where, problem.what());
    } catch (...) {
        Diagnostics::count("exception in handler", "not derived from std::exception");
        LogBoth("wainscot: exception in %s: of unknown type", where);
    }
}

} // namespace wainscot
