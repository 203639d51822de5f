#include "bench/driving.h"
#include "foundation/tab_order_manager.h"
#include "foundation/val_observer.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

/// What telling observers and keeping a tab order cost, without any widget.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;

constexpr int repetitions = 3;
constexpr int numObservers = 100000;
constexpr int numChanges = 101;

double nanosecondsEach(int count, std::function<void()> const& work) {
    double const start = now();
    work();
    return (now() - start) * 1e6 / count;
}

/// A listener, and an observer that passes on to a client.
class Summing final : public ValClient<int> {
public:
    explicit Summing(long& sum) : sum_(sum) {}
    void handleNotification(NotifierEvent<int> const& event) override {
        if (event.type == ValServerBase::valChangedMsgType) sum_ += event.value;
    }

private:
    long& sum_;
};

class SummingClient final : public ValObserverClient {
public:
    SummingClient(ValServer<int> const& server, long& sum) : server_(server), sum_(sum) {}
    void notifyValChanged(ValObserverBase*) override { sum_ += server_.value(); }

private:
    ValServer<int> const& server_;
    long& sum_;
};

struct NotifyFigures {
    std::vector<double> notify, attach, detach, bytes;
};

template <class Observer, class Make>
void notifyOnce(ValServer<int>& server, long& sum, NotifyFigures& figures, Make make) {
    double const before = residentBytes();
    std::vector<std::unique_ptr<Observer>> observers;
    observers.reserve(numObservers);
    for (int i = 0; i < numObservers; ++i) observers.push_back(make());
    figures.attach.push_back(nanosecondsEach(numObservers, [&] {
        for (auto& observer : observers) observer->attach(server);
    }));
    figures.bytes.push_back((residentBytes() - before) / numObservers);
    sum = 0;
    std::vector<double> changes;
    for (int change = 1; change <= numChanges; ++change)
        changes.push_back(nanosecondsEach(numObservers, [&] { server = change; }));
    figures.notify.push_back(median(changes));
    check(sum == static_cast<long>(numObservers) * numChanges * (numChanges + 1) / 2, "the sum is wrong");
    // From the middle outwards, so that neither end is favoured.
    figures.detach.push_back(nanosecondsEach(numObservers, [&] {
        for (int i = 0; i < numObservers; ++i) {
            int const step = (i + 1) / 2;
            int const place = numObservers / 2 - (i % 2 ? step : -step);
            observers[static_cast<std::size_t>(std::min(place, numObservers - 1))]->detach();
        }
        observers.front()->detach();
    }));
    check(server.numObservers() == 0, "observers are left");
}

void report(char const* workload, NotifyFigures const& figures) {
    Report line(workload, numObservers);
    line.addRuns("notify_ns_per_observer", figures.notify);
    line.addRuns("attach_ns_per_observer", figures.attach);
    line.addRuns("detach_ns_per_observer", figures.detach);
    line.add("rss_bytes_per_observer", figures.bytes.front());
    line.print();
}

void benchObservers() {
    long sum = 0;
    ValServer<int> server;
    NotifyFigures figures;
    for (int r = 0; r < repetitions; ++r)
        notifyOnce<Summing>(server, sum, figures, [&] { return std::make_unique<Summing>(sum); });
    report("W8", figures);
}

void benchObserverClients() {
    long sum = 0;
    ValServer<int> server;
    SummingClient client(server, sum);
    NotifyFigures figures;
    for (int r = 0; r < repetitions; ++r)
        notifyOnce<ValObserver<int>>(server, sum, figures,
                                     [&] { return std::make_unique<ValObserver<int>>(&client); });
    report("W8 through a client", figures);
}

class Stop final : public TabOrderable {
public:
    bool isTabStopActive() override { return true; }
    void handleTabStopFocusReceipt(eDirection) override { ++numReceipts; }
    static inline int numReceipts = 0;
};

void benchTabOrder(int count) {
    std::vector<double> atEnd, inFront, steps, removals, bytes;
    for (int r = 0; r < repetitions; ++r) {
        auto stops = std::make_unique<std::vector<Stop>>(static_cast<std::size_t>(count));
        TabOrderManager appended(false);
        double const before = residentBytes();
        atEnd.push_back(nanosecondsEach(count, [&] {
            for (Stop& stop : *stops) appended.addTabStop(stop);
        }));
        bytes.push_back((residentBytes() - before) / count);
        TabOrderManager pushed(false);
        inFront.push_back(nanosecondsEach(count, [&] {
            for (Stop& stop : *stops) pushed.addTabStop(stop, 0);
        }));
        check(pushed.getTabStopTabOrder(0) == static_cast<unsigned int>(count) - 1, "the order is wrong");
        Stop::numReceipts = 0;
        steps.push_back(nanosecondsEach(count, [&] {
            for (int i = 0; i < count; ++i) pushed.incrementTabStop();
        }));
        check(Stop::numReceipts == count, "not every step found a stop");
        // A stop that dies leaves both managers.
        removals.push_back(nanosecondsEach(count, [&] { stops.reset(); }));
        check(pushed.numTabStops() == 0, "stops are left");
    }
    Report line("tab order", count);
    line.addRuns("append_ns", atEnd);
    line.addRuns("add_in_front_ns", inFront);
    line.addRuns("step_ns", steps);
    line.addRuns("leave_two_managers_ns", removals);
    line.add("rss_bytes_per_stop", bytes.front());
    line.print();
}

template <int count>
void benchTabOrderOf() {
    benchTabOrder(count);
}

} // namespace

int main(int count, char** names) {
    return runWorkloads(count, names,
                        {{"notify", benchObservers},
                         {"notify", benchObserverClients},
                         {"taborder", benchTabOrderOf<1000>},
                         {"taborder", benchTabOrderOf<10000>},
                         {"taborder", benchTabOrderOf<100000>}});
}
