#include "tests/keys/AttributesFixture.h"

#include "keys/attributes/AttrBrowsers.h"

#include <cstdio>

namespace {

std::string BrowseName(AttrBrowse browse) {
    static constexpr struct {
        AttrBrowse browse;
        const char* name;
    } kNames[] = {{&BrowseCamera, "camera"},       {&BrowseMeshElementName, "element"},
                  {&BrowseAnimation, "animation"}, {&BrowseSoundFile, "sound"},
                  {&BrowseEffect, "effect"},       {&BrowseColor, "color"}};
    for (const auto& entry : kNames) {
        if (entry.browse == browse) {
            return std::string(" ...") + entry.name;
        }
    }
    return browse == nullptr ? "" : " ...unknown";
}

std::string ShownText(const CMember& member) {
    std::string text;
    if (member.mode == CMember::kEnumerated) {
        member.GetEnumText(text);
    } else {
        member.value[0].ToText(text);
    }
    return text;
}

} // namespace

void AttributesTest::Fill(IFilmKey& record) {
    rows.DeleteAll();
    const KeyAttributes* attributes = GetKeyAttributes(record.kind);
    ASSERT_NE(attributes, nullptr);
    attributes->fill(rows, record);
    ShowRows();
}

void AttributesTest::Apply(IFilmKey& record, const RecordAlive& alive) {
    const KeyAttributes* attributes = GetKeyAttributes(record.kind);
    ASSERT_NE(attributes, nullptr);
    attributes->apply(rows, record, {plugin, alive});
}

void AttributesTest::ShowRows() {
    for (const AttrRow* row : rows) {
        row->member->UpdateVisibility();
    }
}

std::vector<std::string> AttributesTest::Lines() const {
    std::vector<std::string> lines;
    for (const AttrRow* row : rows) {
        const CMember& member = *row->member;
        lines.push_back(member.category + "/" + member.name + "/" +
                        std::to_string(member.value[0].GetType()) + "/" + ShownText(member) +
                        (member.IsHidden() ? " hidden" : "") + BrowseName(row->browse));
    }
    return lines;
}

std::string AttributesTest::TextOf(const char* name, const char* category) const {
    const CMember* member = rows.FindMember(name, category);
    return member != nullptr ? ShownText(*member) : "none";
}

bool AttributesTest::IsHidden(const char* name, const char* category) const {
    const CMember* member = rows.FindMember(name, category);
    EXPECT_NE(member, nullptr) << name;
    return member != nullptr && member->IsHidden();
}

void AttributesTest::Type(const char* name, const char* category, const char* text) {
    CMember* member = rows.FindMember(name, category);
    ASSERT_NE(member, nullptr) << name;
    member->value[0].Parse(text);
    ShowRows();
}

void AttributesTest::Choose(const char* name, const char* category, int index) {
    CMember* member = rows.FindMember(name, category);
    ASSERT_NE(member, nullptr) << name;
    ASSERT_TRUE(member->SetEnumIndex(index));
    ShowRows();
}

void AttributesTest::Tick(const char* name, const char* category, bool flag) {
    Type(name, category, flag ? "true" : "false");
}

IFilm* AttributesTest::Film() {
    return plugin.GetCurrentFilm() != nullptr ? plugin.GetCurrentFilm() : OpenNewFilm();
}

CFilmTrack* AttributesTest::LevelTrack() {
    return Film()->mainTrack;
}

CFilmTrack* AttributesTest::ObjectTrack() {
    IFilm* film = Film();
    EditorObject* object = editor.Create("Robot");
    plugin.AddActors({object});
    return film->FindObjectTrack(object);
}

CFilmTrack* AttributesTest::CameraTrack() {
    return AddCamera(Film(), "Main");
}

std::string ShowString(const void* text) {
    return *static_cast<const std::string*>(text);
}

std::string ShowFloat(const void* number) {
    char text[40];
    std::snprintf(text, sizeof text, "%g", static_cast<double>(*static_cast<const float*>(number)));
    return text;
}

std::string ShowFloats(const void* numbers) {
    const auto* three = static_cast<const float*>(numbers);
    return ShowFloat(three) + " " + ShowFloat(three + 1) + " " + ShowFloat(three + 2);
}

std::string ShowInt(const void* number) {
    return std::to_string(*static_cast<const std::int32_t*>(number));
}

std::string ShowVector(const Vector3& vector) {
    return ShowFloats(vector.Data());
}
