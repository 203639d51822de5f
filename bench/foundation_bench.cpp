#include "foundation/tab_order_manager.h"
#include "foundation/val_observer.h"
#include "host/services/clock.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

/// What telling observers and keeping a tab order cost, without any widget.
namespace {

using namespace wainscot;

constexpr int repetitions = 3;
constexpr int numObservers = 100000;
constexpr int numChanges = 101;

double now() {
    static SystemClock const clock;
    return clock.msecs();
}

double nanosecondsEach(int count, std::function<void()> const& work) {
    double const start = now();
    work();
    return (now() - start) * 1e6 / count;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double residentBytes() {
    long pages = 0;
    long resident = 0;
    FILE* const file = std::fopen("/proc/self/statm", "r");
    if (!file) return 0;
    if (std::fscanf(file, "%ld %ld", &pages, &resident) != 2) resident = 0;
    std::fclose(file);
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

bool failed = false;

void check(bool right, char const* what) {
    if (right) return;
    failed = true;
    std::fprintf(stderr, "foundation bench: %s\n", what);
}

/// A listener of its own kind, and one that passes on to a client.
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
    std::printf(
        "{\"workload\":\"%s\",\"n\":%d,\"metrics\":{\"notify_ns_per_observer\":%.2f,"
        "\"attach_ns_per_observer\":%.2f,\"detach_ns_per_observer\":%.2f,\"rss_bytes_per_observer\":%.1f}}\n",
        workload, numObservers, median(figures.notify), median(figures.attach), median(figures.detach),
        figures.bytes.front());
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
        // Each leaves both managers.
        removals.push_back(nanosecondsEach(count, [&] { stops.reset(); }));
        check(pushed.numTabStops() == 0, "stops are left");
    }
    std::printf(
        "{\"workload\":\"tab order\",\"n\":%d,\"metrics\":{\"append_ns\":%.0f,\"add_in_front_ns\":%.0f,"
        "\"step_ns\":%.0f,\"leave_two_managers_ns\":%.0f,\"rss_bytes_per_stop\":%.0f}}\n",
        count, median(atEnd), median(inFront), median(steps), median(removals), bytes.front());
}

/// In a process of its own: memory that one workload has freed would hide what the next one takes.
void runApart(std::function<void()> const& workload) {
    pid_t const child = fork();
    if (child == 0) {
        workload();
        std::fflush(stdout);
        _exit(failed ? 1 : 0);
    }
    int status = 0;
    check(child > 0 && waitpid(child, &status, 0) == child && status == 0, "a workload failed");
}

} // namespace

int main(int count, char** names) {
    auto const isWanted = [&](char const* group) {
        return count < 2 ||
               std::any_of(names + 1, names + count, [&](char const* n) { return std::string(n) == group; });
    };
    if (isWanted("notify")) {
        runApart(benchObservers);
        runApart(benchObserverClients);
    }
    if (isWanted("taborder"))
        for (int const stops : {1000, 10000, 100000}) runApart([stops] { benchTabOrder(stops); });
    return failed ? 1 : 0;
}
