#pragma once

#include "plugin/session/ScenarioWindow.h"

#include <functional>
#include <string>
#include <vector>

class IPluginImpl;

/// The key attributes window as far as its callers notice it: it keeps the key that it is given and notes
/// what is asked of it, as "SetKey key", "SetKey null", "Refresh", "Show 5", "Hide", "Reset" and
/// "Destroy".
class FakeAttributes : public IKeyAttributesDlg {
public:
    /// Notes into a log of its own.
    FakeAttributes() : log(ownLog) {}
    /// Notes into a log that others share; it must outlive this.
    explicit FakeAttributes(std::vector<std::string>& calls) : log(calls) {}

    bool GetLinkObjectText(const EditorObject* object, std::string& text) const override;
    void SetLinkObject(EditorObject* object) override { linked = object; }
    bool IsVisible() const override { return visible; }
    void Hide() override;
    void Show(int command) override;
    void SetKey(CTrackKey* newKey, bool refresh) override;
    IFilmKey* GetRecord() const override { return record; }
    CTrackKey* GetKey() const override { return key; }
    void Reset() override;
    void ApplyPending() override {
        if (onApplyPending) {
            onApplyPending();
        }
    }
    void Destroy() override { log.push_back("Destroy"); }

    std::function<void()> onSetKey; ///< what a question to the user lets in
    std::function<void()> onApplyPending;
    const EditorObject* taken = nullptr; ///< the only object whose menu gets the item "Set object here"
    EditorObject* linked = nullptr;      ///< of the last SetLinkObject
    CTrackKey* key = nullptr;
    IFilmKey* record = nullptr;
    bool visible = false;
    std::vector<std::string>& log;

private:
    std::vector<std::string> ownLog;
};

/// Gives the plug-in such a window, which it owns.
FakeAttributes& OpenFakeAttributes(IPluginImpl& plugin);
/// The same, noting into a log that must outlive it.
FakeAttributes& OpenFakeAttributes(IPluginImpl& plugin, std::vector<std::string>& calls);
