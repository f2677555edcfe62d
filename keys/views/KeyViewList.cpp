#include "keys/views/KeyViewList.h"

#include "keys/views/TimedTrackKey.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <map>
#include <tuple>

namespace {

/// Views that share one leaf of the tree of ends.
constexpr std::size_t kRun = 16;
/// From this part of the list on, walking all of it is cheaper than sorting what was found.
constexpr std::size_t kWalkFrom = 8;

// A million keys are edited in a few hundred megabytes: 16 bytes is what the allocator adds and rounds up to,
// 16 the share in a vector that has just doubled, 5 the share in the index.
constexpr std::size_t kBytesPerKey = 150;
static_assert(sizeof(CTimedTrackKey) + 16 + 2 * sizeof(void*) + 5 < kBytesPerKey);

constexpr float kNever = -std::numeric_limits<float>::infinity();

struct Draft {
    int height;
    float duration;
    CTrackKey* view;
};

/// The duration by which a view takes its place. One that is no number is shorter than none of those before
/// it, and later ones go in front of it or behind it as they do with the shortest of them.
float OrderDuration(std::map<int, float>& shortest, const CTrackKey& view) {
    float& least =
        shortest.try_emplace(view.rectHeight, std::numeric_limits<float>::infinity()).first->second;
    const float duration = view.GetDuration();
    if (std::isnan(duration)) {
        return least;
    }
    least = std::min(least, duration);
    return duration;
}

} // namespace

KeyViewList::~KeyViewList() {
    Clear();
}

bool KeyViewList::Contains(const CTrackKey* view) const {
    return std::ranges::find(views, view) != views.end();
}

void KeyViewList::Insert(CTrackKey* view) {
    auto place = views.end();
    if (!filling) {
        place =
            std::ranges::find_if(views, [view](const CTrackKey* key) { return key->IsDrawnBefore(view); });
    }
    views.insert(place, view);
    view->list = this;
    indexValid = false;
}

void KeyViewList::BeginFill() {
    filling = views.empty();
}

void KeyViewList::EndFill() {
    if (filling) {
        SortFilled();
    }
    filling = false;
}

void KeyViewList::SortFilled() {
    std::map<int, float> shortest;
    std::vector<Draft> drafts;
    drafts.reserve(views.size());
    for (CTrackKey* view : views) {
        drafts.push_back({view->rectHeight, OrderDuration(shortest, *view), view});
    }
    std::ranges::stable_sort(drafts, [](const Draft& a, const Draft& b) {
        return std::tie(a.height, a.duration) > std::tie(b.height, b.duration);
    });
    std::ranges::transform(drafts, views.begin(), &Draft::view);
    indexValid = false;
}

void KeyViewList::Remove(CTrackKey* view) {
    // From the back: whoever empties a list view by view does it in that order.
    const auto found = std::find(views.rbegin(), views.rend(), view);
    if (found == views.rend()) {
        return;
    }
    view->list = nullptr;
    views.erase(std::next(found).base());
    indexValid = false;
}

void KeyViewList::Clear() {
    for (CTrackKey* view : views) {
        view->list = nullptr;
    }
    views.clear();
    indexValid = false;
}

std::vector<KeyViewList::Span> KeyViewList::SpansByTime() const {
    std::vector<Span> spans;
    spans.reserve(views.size());
    for (std::uint32_t place = 0; place < views.size(); ++place) {
        const float start = views[place]->time;
        const float end = start + views[place]->GetDuration();
        // A span with an end that is no number meets nothing.
        if (!std::isnan(start) && !std::isnan(end)) {
            spans.push_back({start, end, place});
        }
    }
    std::ranges::sort(spans, {}, &Span::start);
    return spans;
}

void KeyViewList::RebuildIndex() const {
    const std::vector<Span> spans = SpansByTime();
    const std::size_t leaves = std::bit_ceil(std::max<std::size_t>(1, (spans.size() + kRun - 1) / kRun));
    latestEnds.assign(2 * leaves, kNever);
    byTime.resize(spans.size());
    for (std::size_t i = 0; i < spans.size(); ++i) {
        byTime[i] = spans[i].place;
        float& latest = latestEnds[leaves + i / kRun];
        latest = std::max(latest, spans[i].end);
    }
    for (std::size_t node = leaves - 1; node > 0; --node) {
        latestEnds[node] = std::max(latestEnds[2 * node], latestEnds[2 * node + 1]);
    }
    indexValid = true;
}

void KeyViewList::CollectPlaces(const Search& search, std::size_t node, std::size_t firstLeaf,
                                std::size_t leaves) const {
    const std::size_t first = firstLeaf * kRun;
    if (first >= search.count || !(latestEnds[node] >= search.from)) {
        return;
    }
    if (leaves > 1) {
        CollectPlaces(search, 2 * node, firstLeaf, leaves / 2);
        CollectPlaces(search, 2 * node + 1, firstLeaf + leaves / 2, leaves / 2);
        return;
    }
    for (std::size_t i = first; i < std::min(first + kRun, search.count); ++i) {
        const CTrackKey& view = *views[byTime[i]];
        if (view.time + view.GetDuration() >= search.from) {
            search.places.push_back(byTime[i]);
        }
    }
}

void KeyViewList::CollectAll(float from, float to, std::vector<CTrackKey*>& found) const {
    for (CTrackKey* view : views) {
        if (view->time <= to && view->time + view->GetDuration() >= from) {
            found.push_back(view);
        }
    }
}

void KeyViewList::Overlapping(float from, float to, std::vector<CTrackKey*>& found) const {
    // Kept between calls, so that a repaint makes no memory.
    static std::vector<std::uint32_t> places;
    found.clear();
    if (std::isnan(from) || std::isnan(to)) {
        return;
    }
    if (!indexValid) {
        RebuildIndex();
    }
    places.clear();
    const auto startOf = [this](std::uint32_t place) { return views[place]->time; };
    const auto behind = std::ranges::upper_bound(byTime, to, {}, startOf);
    CollectPlaces({from, static_cast<std::size_t>(behind - byTime.begin()), places}, 1, 0,
                  latestEnds.size() / 2);
    if (places.size() * kWalkFrom > views.size()) {
        CollectAll(from, to, found);
        return;
    }
    std::ranges::sort(places);
    for (const std::uint32_t place : places) {
        found.push_back(views[place]);
    }
}
