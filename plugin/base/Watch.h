#pragma once

#include <utility>

/// What a Watch follows: every watch on it is empty from its end on. A base class; one thread only.
class Watched {
public:
    Watched() = default;
    Watched(const Watched&) = delete;
    Watched& operator=(const Watched&) = delete;

protected:
    ~Watched() { EndWatches(); }
    /// For the first line of a destructor that calls out: whoever asks from here on hears that it is gone.
    void EndWatches();

private:
    friend class WatchLink;

    class WatchLink* newestWatch = nullptr; ///< the newest of those that follow this
};

/// One watch in the list of those that follow the same thing. Without allocation, so that the key views of a
/// large film pay one pointer each.
class WatchLink {
protected:
    explicit WatchLink(Watched* target) { Follow(target); }
    WatchLink(const WatchLink& other) : WatchLink(other.watched) {}
    WatchLink& operator=(const WatchLink& other) {
        if (this != &other && watched != other.watched) {
            Leave();
            Follow(other.watched);
        }
        return *this;
    }
    ~WatchLink() { Leave(); }

    Watched* GetWatched() const { return watched; }

private:
    friend class Watched;

    void Follow(Watched* target) {
        watched = target;
        previous = nullptr;
        next = target != nullptr ? std::exchange(target->newestWatch, this) : nullptr;
        if (next != nullptr) {
            next->previous = this;
        }
    }
    void Leave() {
        if (watched == nullptr) {
            return;
        }
        (previous != nullptr ? previous->next : watched->newestWatch) = next;
        if (next != nullptr) {
            next->previous = previous;
        }
        watched = nullptr;
    }

    Watched* watched = nullptr;
    WatchLink* previous = nullptr;
    WatchLink* next = nullptr;
};

inline void Watched::EndWatches() {
    for (WatchLink* link = std::exchange(newestWatch, nullptr); link != nullptr; link = link->next) {
        link->watched = nullptr;
    }
}

/// A pointer that becomes null when its object goes. For what is held across a call that may delete anything:
/// a message box, a menu, the host, playing.
template <class T> class Watch : private WatchLink {
public:
    explicit Watch(T* target = nullptr) : WatchLink(target) {}

    /// Null once the object has gone.
    T* Get() const { return static_cast<T*>(GetWatched()); }
    T* operator->() const { return Get(); }
    bool IsAlive() const { return GetWatched() != nullptr; }
    explicit operator bool() const { return IsAlive(); }
};
