#pragma once

#include <cstdint>
#include <vector>

class CTrackKey;

/// The views of one row in the order of drawing, with an index by time that makes painting and hit tests
/// independent of the keys that are not looked at. Owns nothing.
///
/// Draw order isn't time order, and it is only set at insertion: a view whose duration changes later keeps
/// its place.
class KeyViewList {
public:
    using const_iterator = std::vector<CTrackKey*>::const_iterator;

    KeyViewList() = default;
    ~KeyViewList();
    KeyViewList(const KeyViewList&) = delete;
    KeyViewList& operator=(const KeyViewList&) = delete;

    const_iterator begin() const { return views.begin(); }
    const_iterator end() const { return views.end(); }
    bool empty() const { return views.empty(); }
    std::size_t size() const { return views.size(); }
    CTrackKey* front() const { return views.front(); }
    CTrackKey* back() const { return views.back(); }
    CTrackKey* operator[](std::size_t index) const { return views[index]; }
    bool Contains(const CTrackKey* view) const;

    /// In front of the first view E with E.IsDrawnBefore(view), else at the end.
    void Insert(CTrackKey* view);
    /// Between the two, Insert only appends, and EndFill brings the same order about at once. Only for a list
    /// that is empty at the start; nothing may look at the order in between.
    void BeginFill();
    void EndFill();
    /// Takes the view out; nothing if it isn't in.
    void Remove(CTrackKey* view);
    void Clear();

    /// The views whose span [time, time + duration] meets [from, to], ends included, in draw order. `found`
    /// is cleared first.
    void Overlapping(float from, float to, std::vector<CTrackKey*>& found) const;
    /// A view of the list has another time or duration than before.
    void TimesChanged() { indexValid = false; }

private:
    /// What the index holds of one view while it is built.
    struct Span {
        float start;
        float end;
        std::uint32_t place;
    };

    struct Search {
        float from;
        std::size_t count; ///< so many views of `byTime` start early enough
        std::vector<std::uint32_t>& places;
    };

    std::vector<Span> SpansByTime() const;
    void RebuildIndex() const;
    /// Goes down the tree of ends from a node that stands for so many leaves.
    void CollectPlaces(const Search& search, std::size_t node, std::size_t firstLeaf,
                       std::size_t leaves) const;
    void CollectAll(float from, float to, std::vector<CTrackKey*>& found) const;
    void SortFilled();

    std::vector<CTrackKey*> views;
    bool filling = false;
    mutable bool indexValid = false;
    mutable std::vector<std::uint32_t> byTime; ///< places in `views`, by time
    mutable std::vector<float> latestEnds;     ///< binary tree of the latest end in each run of `byTime`
};
