#pragma once

#include "undo/FilmsUndoAction.h"

class CTrackCtrl;
class CTrackKey;
class IFilmKey;
class TimelineContext;

/// An edit of one key of one row. A twin of the key is the first key of the row that equals it, its time
/// included.
class CFUAOneKey : public CFilmsUndoAction {
public:
    /// The main control may be null: then no view can be made, and no record goes back.
    explicit CFUAOneKey(TimelineContext* control) : timeline(control) {}
    /// With `ownsKey` the record goes back to the factory, and the view is deleted.
    ~CFUAOneKey() override;

    /// Both give back what they take.
    virtual CTrackKey* SetKey(CTrackKey* newKey);
    virtual CTrackCtrl* SetTrackCtrl(CTrackCtrl* newRow);

    CTrackKey* key = nullptr;
    CTrackCtrl* trackCtrl = nullptr;
    bool ownsKey = true;

protected:
    /// A view in no row of the key's kind; null if it can't be made.
    CTrackKey* MakeView() const;
    /// Puts a view into the row; what the row doesn't take is destroyed.
    void Insert(CTrackKey* view) const;
    /// Takes the twin out of the row; true whether there is one or not.
    bool RemoveTwin();
    /// Puts a copy of the key into the row; always true.
    bool InsertCopy();

    TimelineContext* timeline; ///< outlives the action
};

class CFUAAddKey : public CFUAOneKey {
public:
    explicit CFUAAddKey(TimelineContext* control);
    bool Undo() override { return RemoveTwin(); }
    bool Redo() override { return InsertCopy(); }
};

class CFUADeleteKey : public CFUAOneKey {
public:
    explicit CFUADeleteKey(TimelineContext* control);
    bool Undo() override { return InsertCopy(); }
    bool Redo() override { return RemoveTwin(); }
};

/// Unlike the two above it answers false when there is nothing to do.
class CFUACloneKey : public CFUAOneKey {
public:
    explicit CFUACloneKey(TimelineContext* control);
    bool Undo() override;
    bool Redo() override;
};

/// Undo and Redo both swap the key's place with the stored one.
class CFUAChangeSize : public CFUAOneKey {
public:
    explicit CFUAChangeSize(TimelineContext* control) : CFUAOneKey(control) { ownsKey = false; }
    bool Undo() override { return Swap(); }
    bool Redo() override { return Swap(); }

    float start = -1.0f; ///< seconds
    float end = -1.0f;

private:
    bool Swap();
};

/// Undo and Redo both swap the key's record with the stored one.
class CFUAChangeAttribs : public CFUAOneKey {
public:
    explicit CFUAChangeAttribs(TimelineContext* control);
    ~CFUAChangeAttribs() override;
    bool Undo() override { return Swap(); }
    bool Redo() override { return Swap(); }

    IFilmKey* savedRecord = nullptr; ///< owned

private:
    bool Swap();
};
