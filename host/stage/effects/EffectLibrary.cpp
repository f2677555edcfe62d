#include "host/stage/effects/EffectLibrary.h"

#include <algorithm>
#include <QDir>
#include <QFileInfo>
#include <QMap>

namespace stage {

namespace {

/// More than anybody looks through; a folder with more shows so many.
constexpr qsizetype kMaxNames = 10000;

QString KindFolder(const std::string& folder, EffectKind kind) {
    return QString::fromStdString(folder) + '/' + EffectKindName(kind);
}

} // namespace

EffectLibrary::EffectLibrary(std::vector<std::string> effectFolders) : folders(std::move(effectFolders)) {
    std::erase(folders, std::string());
}

std::vector<std::string> EffectLibrary::Names(EffectKind kind) const {
    QMap<QString, QString> byOrder; // by the name in small letters and then as it is
    for (const std::string& folder : folders) {
        const QDir dir(KindFolder(folder, kind));
        for (const QString& file :
             dir.entryList({QString("*") + EffectFile::kEnding}, QDir::Files | QDir::CaseSensitive)) {
            const QString name = file.chopped(static_cast<qsizetype>(qstrlen(EffectFile::kEnding)));
            if (!name.isEmpty() && byOrder.size() < kMaxNames) {
                byOrder.insert(name.toLower() + '\n' + name, name);
            }
        }
    }
    std::vector<std::string> names;
    for (const QString& name : byOrder) {
        names.push_back(name.toStdString());
    }
    return names;
}

std::string EffectLibrary::PathOf(EffectKind kind, const std::string& name) const {
    // A name is no path: levels come from elsewhere, and theirs must not lead out of the folder.
    if (name.empty() || name.find('/') != std::string::npos || name.find('\0') != std::string::npos) {
        return "";
    }
    for (const std::string& folder : folders) {
        const QString path =
            KindFolder(folder, kind) + '/' + QString::fromStdString(name) + EffectFile::kEnding;
        if (QFileInfo(path).isFile()) {
            return path.toStdString();
        }
    }
    return "";
}

Effect EffectLibrary::Load(EffectKind kind, const std::string& name) const {
    const std::string path = PathOf(kind, name);
    if (path.empty()) {
        throw EffectFileError(name + ": no " + EffectKindName(kind) + " effect of that name");
    }
    return EffectFile::Read(kind, path);
}

} // namespace stage
