#pragma once

#include "undo/FilmsUndoAction.h"

class CTrackCtrl;
class CTrackKey;
class IFilmKey;

/// An edit of one key of one row. A twin of the key is the first key of the row that equals it, its time
/// included.
class CFUAOneKey : public CFilmsUndoAction {
public:
    /// With `ownsKey` the record goes back to the factory, and the view is deleted.
    ~CFUAOneKey() override;

    /// Both give back what they take.
    virtual CTrackKey* SetKey(CTrackKey* newKey);
    virtual CTrackCtrl* SetTrackCtrl(CTrackCtrl* newRow);

    CTrackKey* key = nullptr;
    CTrackCtrl* trackCtrl = nullptr;
    bool ownsKey = true;

protected:
    /// Takes the twin out of the row; true whether there is one or not.
    bool RemoveTwin();
    /// Puts a copy of the key into the row; always true.
    bool InsertCopy();
};

class CFUAAddKey : public CFUAOneKey {
public:
    CFUAAddKey();
    bool Undo() override { return RemoveTwin(); }
    bool Redo() override { return InsertCopy(); }
};

class CFUADeleteKey : public CFUAOneKey {
public:
    CFUADeleteKey();
    bool Undo() override { return InsertCopy(); }
    bool Redo() override { return RemoveTwin(); }
};

/// Unlike the two above it answers false when there is nothing to do.
class CFUACloneKey : public CFUAOneKey {
public:
    CFUACloneKey();
    bool Undo() override;
    bool Redo() override;
};

/// Undo and Redo both swap the key's place with the stored one.
class CFUAChangeSize : public CFUAOneKey {
public:
    CFUAChangeSize() { ownsKey = false; }
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
    CFUAChangeAttribs();
    ~CFUAChangeAttribs() override;
    bool Undo() override { return Swap(); }
    bool Redo() override { return Swap(); }

    IFilmKey* savedRecord = nullptr; ///< owned

private:
    bool Swap();
};
