#include "host/messages/notifier.h"

#include "host/base/first_exception.h"

#include <unordered_map>

namespace wainscot {

struct NotifyMsgTypeDictionary::Names {
    std::unordered_map<LightweightString<char>, int> numbers;
};

NotifyMsgTypeDictionary::NotifyMsgTypeDictionary() : names_(std::make_unique<Names>()) {}
NotifyMsgTypeDictionary::~NotifyMsgTypeDictionary() = default;

NotifyMsgTypeDictionary& NotifyMsgTypeDictionary::instance() {
    static NotifyMsgTypeDictionary dictionary;
    return dictionary;
}

int NotifyMsgTypeDictionary::typeOf(LightweightString<char> const& name) {
    auto const next = static_cast<int>(names_->numbers.size()) + 1;
    return names_->numbers.try_emplace(name, next).first->second;
}

namespace {

class CallbackInvoker final : public CallbackInvokerBase {
public:
    CallbackInvoker(int type, Qv::Ptr<iCallbackBase<int, NotifyMsg>> callback)
        : type_(type), callback_(std::move(callback)) {}
    bool typeMatch(int type) const override { return type_ == anyType || type_ == type; }
    void invoke(NotifyMsg const& message) override {
        Qv::Ptr<iCallbackBase<int, NotifyMsg>> const held = callback_;
        if (held) held->call(message);
    }

private:
    int type_;
    Qv::Ptr<iCallbackBase<int, NotifyMsg>> callback_;
};

} // namespace

NotifierSubscription::NotifierSubscription(NotifierBase& notifier, NotifierBase::Id id)
    : notifier_(&notifier), life_(notifier.life()), id_(id) {}

NotifierSubscription::NotifierSubscription(NotifierSubscription&& other) noexcept
    : notifier_(std::exchange(other.notifier_, nullptr)), life_(other.life_), id_(other.id_) {}

NotifierSubscription& NotifierSubscription::operator=(NotifierSubscription&& other) noexcept {
    if (this == &other) return *this;
    end();
    notifier_ = std::exchange(other.notifier_, nullptr);
    life_ = other.life_;
    id_ = other.id_;
    return *this;
}

void NotifierSubscription::end() {
    if (notifier_ && life_.alive()) notifier_->unregister(id_);
    notifier_ = nullptr;
}

NotifierBase::~NotifierBase() = default;

NotifierBase::Id NotifierBase::registerInternal(CallbackInvokerBase* invoker) {
    return invokers_.add(Qv::Ptr<CallbackInvokerBase>(invoker));
}

NotifierSubscription NotifierBase::subscribe(LightweightString<char> const& name,
                                             Qv::Ptr<iCallbackBase<int, NotifyMsg>> callback) {
    int const type =
        name.empty() ? CallbackInvokerBase::anyType : NotifyMsgTypeDictionary::instance().typeOf(name);
    return NotifierSubscription(*this, registerInternal(new CallbackInvoker(type, std::move(callback))));
}

void NotifierBase::notify(NotifyMsg const& message, int type) {
    NotifyMsg const kept = message;
    FirstException thrown;
    invokers_.walk([&](Qv::Ptr<CallbackInvokerBase> const& invoker) {
        if (invoker && invoker->typeMatch(type)) thrown.run([&] { invoker->invoke(kept); });
    });
    thrown.rethrow();
}

} // namespace wainscot
