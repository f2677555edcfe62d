#include "host/stage/host/FreeLights.h"
#include "host/stage/windows/assets/AssetFiles.h"
#include "host/stage/windows/browse/EffectBrowser.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/NumberDialog.h"

#include <algorithm>
#include <QMessageBox>

namespace stage {

namespace {

/// As many lines as a box has room for.
QString FirstLines(const std::vector<std::string>& texts) {
    constexpr std::size_t kShown = 15;
    QStringList lines;
    for (std::size_t i = 0; i < std::min(kShown, texts.size()); ++i) {
        lines << QString::fromStdString(texts[i]);
    }
    if (texts.size() > kShown) {
        lines << MainWindow::tr("... and %1 more").arg(texts.size() - kShown);
    }
    return lines.join('\n');
}

} // namespace

std::optional<std::string> MainWindow::BrowseFx(int fxKind, const std::string& present) {
    return EffectBrowser::Pick(EffectsOf(host), fxKind, present, AskingWindow());
}

std::optional<float> MainWindow::InputNumber(float present, const std::string& title,
                                             const std::string& prompt) {
    return NumberDialog::Ask(QString::fromStdString(title), QString::fromStdString(prompt), present, this);
}

void MainWindow::ReportError(const std::string& text) {
    QMessageBox box(QMessageBox::Warning, tr("Stage"), QString::fromStdString(text), QMessageBox::Ok, this);
    box.setObjectName("ReportError");
    box.exec();
}

bool MainWindow::MayLeaveOutLights() {
    const std::vector<std::string> lights = LightsWithoutFilm(host);
    if (lights.empty()) {
        return true;
    }
    QMessageBox box(QMessageBox::Warning, tr("Save"),
                    tr("These lights are in no film any more and are left out of the file."),
                    QMessageBox::Save | QMessageBox::Cancel, this);
    box.setObjectName("LightsLeftOut");
    box.setInformativeText(FirstLines(lights));
    return box.exec() == QMessageBox::Save;
}

void MainWindow::ShowDeleteRefusals(const std::list<DeleteMessage>& messages) {
    std::vector<std::string> lines;
    for (const DeleteMessage& message : messages) {
        // A plug-in may give the same reason again and again, as for each key that links a camera.
        if (std::find(lines.begin(), lines.end(), message.text) == lines.end()) {
            lines.push_back(message.text);
        }
    }
    QMessageBox box(QMessageBox::Information, tr("Delete"), tr("These objects are in use and were kept."),
                    QMessageBox::Ok, this);
    box.setObjectName("DeleteRefused");
    box.setInformativeText(FirstLines(lines));
    box.exec();
}

} // namespace stage
