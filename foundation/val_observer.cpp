#include "foundation/val_observer.h"

namespace wainscot {

ValObserverClient::~ValObserverClient() {
    while (ValObserverBase* const observer = observers_.first()) observer->setClient(nullptr);
}

void ValObserverClient::notifyPreValChanged(ValObserverBase*) {}

void ValObserverClient::notifyValChanged(ValObserverBase*) {}

ValObserverBase::~ValObserverBase() {
    setClient(nullptr);
}

void ValObserverBase::setClient(ValObserverClient* client) {
    if (client_) client_->observers_.remove(*this);
    client_ = client;
    if (client_) client_->observers_.append(*this);
}

void ValObserverBase::tellClient(int type) {
    if (!client_) return;
    if (type == ValServerBase::preValChangedMsgType)
        client_->notifyPreValChanged(this);
    else
        client_->notifyValChanged(this);
}

template class ValObserver<bool>;
template class ValObserver<int>;
template class ValObserver<unsigned int>;
template class ValObserver<float>;
template class ValObserver<double>;
template class ValObserver<LightweightString<char>>;
template class ValObserver<LightweightString<wchar_t>>;
template class ValObserver<ColourData>;
template class ValObserver<ThumbSettings>;

} // namespace wainscot
