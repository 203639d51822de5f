#include "host/drawing/damage.h"

#include <cstdint>
#include <limits>
#include <utility>

namespace wainscot {
namespace {

constinit std::uint32_t takenCount = 1;

std::int64_t areaOf(IntBox const& box) {
    return box.isEmpty() ? 0 : static_cast<std::int64_t>(box.width()) * box.height();
}

/// The pixels that a merged box covers and neither of its parts does.
std::int64_t waste(IntBox const& a, IntBox const& b) {
    return areaOf(a.unitedWith(b)) - areaOf(a) - areaOf(b) + areaOf(a.intersection(b));
}

struct Pair {
    std::size_t first;
    std::size_t second;
};

Pair leastWaste(std::vector<IntBox> const& boxes) {
    Pair best{0, 1};
    std::int64_t least = std::numeric_limits<std::int64_t>::max();
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        for (std::size_t j = i + 1; j < boxes.size(); ++j) {
            std::int64_t const w = waste(boxes[i], boxes[j]);
            if (w >= least) continue;
            least = w;
            best = {i, j};
        }
    }
    return best;
}

IntBox takeAt(std::vector<IntBox>& boxes, std::size_t index) {
    IntBox const box = boxes[index];
    boxes[index] = boxes.back();
    boxes.pop_back();
    return box;
}

/// Takes out the boxes that `box` covers, and joins `box` with those that fit without waste.
void absorb(std::vector<IntBox>& boxes, IntBox& box) {
    for (std::size_t i = 0; i < boxes.size();) {
        if (waste(boxes[i], box) > 0) {
            ++i;
            continue;
        }
        box = box.unitedWith(takeAt(boxes, i));
        i = 0;
    }
}

} // namespace

void Damage::add(IntBox const& box) {
    if (box.isEmpty()) return;
    for (IntBox const& known : boxes_)
        if (known.contains(box)) return;
    if (boxes_.empty() && watcher_) watcher_->damageAdded();
    IntBox added = box;
    absorb(boxes_, added);
    boxes_.push_back(added);
    while (boxes_.size() > maxBoxes) {
        Pair const pair = leastWaste(boxes_);
        IntBox const second = takeAt(boxes_, pair.second);
        IntBox merged = takeAt(boxes_, pair.first).unitedWith(second);
        absorb(boxes_, merged);
        boxes_.push_back(merged);
    }
}

IntBox Damage::bounds() const {
    IntBox all;
    for (IntBox const& box : boxes_) all = all.unitedWith(box);
    return all;
}

bool Damage::intersects(IntBox const& box) const {
    for (IntBox const& known : boxes_)
        if (known.intersects(box)) return true;
    return false;
}

void Damage::clear() {
    ++takenCount;
    boxes_.clear();
}

void Damage::noteShown() {
    ++takenCount;
}

std::uint32_t Damage::numTaken() {
    return takenCount;
}

std::vector<IntBox> Damage::take() {
    ++takenCount;
    return std::exchange(boxes_, {});
}

} // namespace wainscot
