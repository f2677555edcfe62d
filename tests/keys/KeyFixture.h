#pragma once

#include "framework/DC.h"
#include "keys/views/TrackKey.h"
#include "tests/plugin/PluginFixture.h"
#include "tests/support/FakeAttributes.h"
#include "tests/support/FakeTimeline.h"

#include <memory>
#include <string>
#include <vector>

/// A record that writes down which times it is given.
class LoggingKey final : public IFilmKey {
public:
    void SetTime(float value) override;
    void SetEndTime(float value) override;
    void Describe(char*, int) const override {}
    float GetTime() const override { return time; }
    float GetNaturalDuration() const override { return natural; }
    void CopyFrom(const IFilmKey&, int zero) override { log.push_back("CopyFrom " + std::to_string(zero)); }
    bool Equals(const IFilmKey&, bool compareTime) const override {
        lastCompareTime = compareTime;
        return equal;
    }
    void SetValue(const void*) override {}
    void SetInHandle(const void*) override {}
    void SetOutHandle(const void*) override {}
    void SetInMethod(int) override {}
    void SetOutMethod(int) override {}
    void SetLinkElement(const std::string&) override {}
    void SetLinkObject(EditorObject*) override {}

    std::vector<std::string> log;
    float natural = -1.0f;
    bool equal = true;
    mutable bool lastCompareTime = false;
};

/// Key views over an empty level, with a main control that writes down what it is asked.
class KeyTest : public PluginTest {
protected:
    KeyTest();
    ~KeyTest() override;

    /// A record of the host, in no track; destroyed at the end unless somebody did.
    IFilmKey* NewRecord(int kind);
    template <class Record> Record* NewRecordOf(int kind) { return static_cast<Record*>(NewRecord(kind)); }
    /// Shown, with `calls` as its log.
    FakeAttributes& OpenAttributes();
    /// What Draw sends to a surface, a line of text each: "box 0,0,6,15 pen 0/2/000000 fill 808080".
    static std::vector<std::string> Drawn(CTrackKey& view, int x, int y, float pixelsPerSecond,
                                          const CRect* clip = nullptr, bool outline = false);

    std::vector<std::string> calls; ///< of the attributes window and of what shows it
    FakeTimeline timeline{plugin};
    std::vector<IFilmKey*> records; ///< made by NewRecord

private:
    LoggingWindow window{calls};
};

std::string Describe(const DrawCall& call);
