#include "framework/private/Face.h"

#include "framework/Gdi.h"

#include <QApplication>

#include <map>
#include <memory>
#include <tuple>

namespace surface {
namespace {

// Texts change with the film; a full cache is emptied rather than let grow.
constexpr int kMostEntries = 8192;

template <class Cache> void MakeRoom(Cache& cache) {
    if (cache.size() >= kMostEntries) {
        cache.clear();
    }
}

using FaceKey = std::tuple<std::string, int, bool, bool>;
using Faces = std::map<FaceKey, Face>;

Faces* faces = nullptr;

Faces& AllFaces() {
    if (!faces) {
        faces = new Faces;
        qAddPostRoutine([] {
            delete faces;
            faces = nullptr;
        });
    }
    return *faces;
}

QFont MakeFont(const CFont& font) {
    QFont made = font.face.empty() ? QApplication::font() : QFont();
    if (font.face == "Arial") {
        made.setFamilies({"Arial", "Liberation Sans", "DejaVu Sans"});
    } else if (!font.face.empty()) {
        made.setFamily(QString::fromStdString(font.face));
    }
    made.setPixelSize(font.pixelHeight);
    made.setBold(font.bold);
    made.setItalic(font.italic);
    return made;
}

} // namespace

int Face::Width(const QString& text) const {
    const auto found = widths.constFind(text);
    if (found != widths.constEnd()) {
        return *found;
    }
    MakeRoom(widths);
    return *widths.insert(text, metrics.horizontalAdvance(text));
}

const QStaticText& Face::Prepared(const QString& text) {
    const auto found = prepared.constFind(text);
    if (found != prepared.constEnd()) {
        return *found;
    }
    MakeRoom(prepared);
    QStaticText made(text);
    made.setTextFormat(Qt::PlainText);
    made.setPerformanceHint(QStaticText::AggressiveCaching);
    made.prepare(QTransform(), font);
    return *prepared.insert(text, made);
}

const QString* Face::FindShortened(const QString& text, int width) const {
    const auto found = shortened.constFind({text, width});
    return found == shortened.constEnd() ? nullptr : &*found;
}

void Face::KeepShortened(const QString& text, int width, const QString& result) {
    MakeRoom(shortened);
    shortened.insert({text, width}, result);
}

Face& FaceOf(const CFont& font) {
    const FaceKey key{font.face, font.pixelHeight, font.bold, font.italic};
    const auto found = AllFaces().find(key);
    return found != AllFaces().end() ? found->second
                                     : AllFaces().emplace(key, Face(MakeFont(font))).first->second;
}

Face& DefaultFace() {
    return FaceOf(CFont());
}

} // namespace surface
