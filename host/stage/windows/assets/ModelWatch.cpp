#include "host/stage/windows/assets/ModelWatch.h"

#include "host/stage/host/ModelReload.h"
#include "host/stage/windows/assets/FileWatch.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/QuietMoments.h"

#include <QFileInfo>
#include <utility>

namespace stage {

namespace {

QString Joined(const std::vector<std::string>& names) {
    QStringList texts;
    for (const std::string& name : names) {
        texts << QString::fromStdString(name);
    }
    return texts.join(", ");
}

} // namespace

ModelWatch::ModelWatch(MainWindow& mainWindow)
    : QObject(&mainWindow), window(mainWindow), watch(new FileWatch(this)) {
    connect(watch, &FileWatch::Changed, this, &ModelWatch::Request);
    connect(window.quiet, &QuietMoments::Quiet, this, &ModelWatch::OnQuiet);
}

void ModelWatch::Request() {
    isWanted = true;
    window.quiet->Request();
}

void ModelWatch::OnQuiet() {
    if (std::exchange(isWanted, false)) {
        Reload();
    }
    QStringList paths;
    for (const std::string& path : window.host.meshes.Files()) {
        paths.append(QString::fromStdString(path));
        paths.append(QFileInfo(paths.back()).absolutePath()); // tells of a file that comes back
    }
    if (watch->Watch(paths)) {
        Reload(); // what was written before it was watched
    }
}

void ModelWatch::Reload() {
    const ModelNews news = ReloadModels(window.host);
    if (!news.refused.empty()) {
        window.Report(
            tr("A model can't be read; what is shown stays. %1").arg(Joined(news.refused)).toStdString());
    } else if (!news.loaded.empty()) {
        window.Report(tr("Loaded anew: %1").arg(Joined(news.loaded)).toStdString());
    }
    if (!news.refused.empty() || !news.loaded.empty()) {
        emit Changed();
    }
}

} // namespace stage
