#include "tests/keys/KeyFixture.h"

#include <cstdio>

namespace {

std::string Format(const char* format, auto... values) {
    char text[200];
    std::snprintf(text, sizeof text, format, values...);
    return text;
}

std::string RectText(const CRect& r) {
    return Format("%d,%d,%d,%d", r.left, r.top, r.right, r.bottom);
}

std::string PenText(const DrawCall& call) {
    return Format("pen %d/%d/%06X", call.penStyle, call.penWidth, call.penColor);
}

} // namespace

std::string Describe(const DrawCall& call) {
    const std::string rect = RectText(call.rect);
    switch (call.kind) {
    case DrawKind::Rectangle:
        return "box " + rect + " " + PenText(call) +
               (call.hollow ? std::string(" hollow") : Format(" fill %06X", call.brushColor));
    case DrawKind::Line:
        return "line " + rect + " " + PenText(call);
    case DrawKind::Text:
        return "text '" + call.text + "' in " + rect + Format(" format %X", call.format);
    default:
        return "other " + rect;
    }
}

void LoggingKey::SetTime(float value) {
    time = value;
    log.push_back(Format("SetTime %g", static_cast<double>(value)));
}

void LoggingKey::SetEndTime(float value) {
    endTime = value;
    log.push_back(Format("SetEndTime %g", static_cast<double>(value)));
}

KeyTest::KeyTest() {
    window.timeline = &timeline;
    plugin.scenarioDlg = &window;
}

KeyTest::~KeyTest() {
    plugin.scenarioDlg = nullptr;
    plugin.keyAttributesDlg.reset(); // it writes into `calls`
    for (IFilmKey* record : records) {
        Films().keyFactory->DestroyKey(record);
    }
}

IFilmKey* KeyTest::NewRecord(int kind) {
    records.push_back(Films().keyFactory->CreateKey(kind));
    return records.back();
}

FakeAttributes& KeyTest::OpenAttributes() {
    FakeAttributes& dialog = OpenFakeAttributes(plugin, calls);
    dialog.visible = true;
    return dialog;
}

std::vector<std::string> KeyTest::Drawn(CTrackKey& view, int x, int y, float pixelsPerSecond,
                                        const CRect* clip, bool outline) {
    std::vector<std::string> drawn;
    const HookScope scope;
    Hooks().drawing = [&drawn](const DrawCall& call) { drawn.push_back(Describe(call)); };
    CDC dc;
    view.Draw(&dc, x, y, pixelsPerSecond, clip, outline);
    return drawn;
}
