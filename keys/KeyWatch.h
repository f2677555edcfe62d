#pragma once

class CTrackKey;

/// Tells after a call that may have deleted a key's view (a modal window, the attributes window) whether the
/// view is still there. Stands on the stack.
class KeyWatch {
public:
    explicit KeyWatch(const CTrackKey* watched) : key(watched), outer(newest) { newest = this; }
    ~KeyWatch() { newest = outer; }
    KeyWatch(const KeyWatch&) = delete;
    KeyWatch& operator=(const KeyWatch&) = delete;

    bool IsAlive() const { return key != nullptr; }

private:
    friend class CTrackKey;

    static void Tell(const CTrackKey* gone) {
        for (KeyWatch* standing = newest; standing != nullptr; standing = standing->outer) {
            standing->key = standing->key == gone ? nullptr : standing->key;
        }
    }

    static KeyWatch* newest;

    const CTrackKey* key;
    KeyWatch* outer;
};
