#include "host/stage/windows/assets/Assets.h"
#include "host/stage/windows/Icons.h"
#include "host/stage/windows/MainWindow.h"
#include "host/stage/windows/ObjectLook.h"
#include "host/stage/windows/ViewArea.h"
#include "host/stage/windows/WorkKeeper.h"

#include <QAction>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSettings>
#include <QStatusBar>

namespace stage {

namespace {
constexpr int kRecentFiles = 10;
constexpr const char* kRecentKey = "files/recent";
constexpr const char* kFilter = "Levels (*.level)";
} // namespace

QAction* MainWindow::AddAction(QMenu& menu, const QString& text, const QKeySequence& keys,
                               const std::function<void()>& run, const char* name) {
    QAction* action = menu.addAction(text);
    action->setShortcut(keys);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, [run] { run(); });
    return action;
}

void MainWindow::MakeFileMenu() {
    QMenu* menu = menuBar()->addMenu(tr("&File"));
    AddAction(
        *menu, tr("&New level"), QKeySequence::New, [this] { NewLevel(); }, "FileNew")
        ->setIcon(MakeIcon(IconId::New));
    AddAction(
        *menu, tr("&Open..."), QKeySequence::Open, [this] { OpenDialog(); }, "FileOpen")
        ->setIcon(MakeIcon(IconId::Open));
    recentMenu = menu->addMenu(tr("Open &recent"));
    connect(recentMenu, &QMenu::aboutToShow, this, &MainWindow::FillRecentMenu);
    menu->addSeparator();
    QAction* save = AddAction(
        *menu, tr("&Save"), QKeySequence::Save, [this] { Save(); }, "FileSave");
    save->setIcon(MakeIcon(IconId::Save));
    save->setShortcutContext(Qt::ApplicationShortcut); // also from the plug-ins' windows
    AddAction(
        *menu, tr("Save &as..."), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), [this] { SaveAsDialog(); },
        "FileSaveAs");
    menu->addSeparator();
    AddAction(
        *menu, tr("&Missing files..."), {}, [this] { assets->ShowMissing(); }, "FileMissing");
    AddAction(
        *menu, tr("Recover &work..."), {}, [this] { OfferKeptWork(/*onlyAfterCrash*/ false); },
        "FileRecover");
    AddAction(
        *menu, tr("A&utosave..."), {}, [this] { AskAutosaveMinutes(); }, "FileAutosave");
    menu->addSeparator();
    AddAction(
        *menu, tr("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), [this] { close(); }, "FileQuit");
}

bool MainWindow::MayLoseChanges() {
    if (!session.IsChanged()) {
        return true;
    }
    QMessageBox box(QMessageBox::Question, tr("Stage"),
                    tr("Save the changes to \"%1\"?").arg(QString::fromStdString(session.Title())),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    box.setObjectName("LoseChanges");
    box.setInformativeText(keeper->folder.IsUsable()
                               ? tr("Otherwise they can be recovered from the File menu until other unsaved "
                                    "work takes their place.")
                               : tr("They are lost otherwise."));
    switch (box.exec()) {
    case QMessageBox::Save:
        return Save();
    case QMessageBox::Discard:
        return MayDiscard();
    default:
        return false;
    }
}

void MainWindow::NewLevel() {
    if (MayLoseChanges()) {
        session.New();
        Report(tr("New level").toStdString());
    }
}

void MainWindow::OpenDialog() {
    if (!MayLoseChanges()) {
        return;
    }
    const QString folder = QFileInfo(QString::fromStdString(session.Path())).path();
    const QString path = QFileDialog::getOpenFileName(this, tr("Open level"), folder, tr(kFilter));
    if (!path.isEmpty()) {
        OpenLevel(path);
    }
}

bool MainWindow::OpenLevel(const QString& path) {
    if (!session.Open(path.toStdString())) {
        return false;
    }
    views->ShowAll();
    RememberRecent(QString::fromStdString(session.Path()));
    Report(tr("Opened %1").arg(path).toStdString());
    assets->OfferMissing();
    return true;
}

bool MainWindow::Save() {
    return session.Path().empty() ? SaveAsDialog() : SaveLevelAs(QString::fromStdString(session.Path()));
}

QString MainWindow::AskSavePath() {
    const QString path = QFileDialog::getSaveFileName(this, tr("Save level"),
                                                      QString::fromStdString(session.Path()), tr(kFilter));
    return path.isEmpty() || !QFileInfo(path).suffix().isEmpty() ? path : path + ".level";
}

bool MainWindow::SaveAsDialog() {
    const QString path = AskSavePath();
    return !path.isEmpty() && SaveLevelAs(path);
}

bool MainWindow::SaveLevelAs(const QString& path) {
    if (!MayLeaveOutLights() || !session.Save(path.toStdString())) {
        return false;
    }
    const QString saved = QString::fromStdString(session.Path());
    RememberRecent(saved);
    Report(tr("Saved %1").arg(saved).toStdString());
    return true;
}

std::optional<std::string> MainWindow::PathForChangedFile(const std::string& path) {
    QMessageBox box(QMessageBox::Warning, tr("Stage"),
                    tr("Another program has changed \"%1\" since it was opened or saved here.")
                        .arg(QString::fromStdString(path)),
                    QMessageBox::NoButton, this);
    box.setObjectName("FileChanged");
    box.setInformativeText(tr("Overwriting it loses what the other program has written."));
    const QAbstractButton* overwrite = box.addButton(tr("Overwrite"), QMessageBox::DestructiveRole);
    QPushButton* saveAs = box.addButton(tr("Save as..."), QMessageBox::AcceptRole);
    box.addButton(QMessageBox::Cancel);
    box.setDefaultButton(saveAs);
    box.exec();
    if (box.clickedButton() == overwrite) {
        return path;
    }
    const QString chosen = box.clickedButton() == saveAs ? AskSavePath() : QString();
    return chosen.isEmpty() ? std::nullopt : std::optional<std::string>(chosen.toStdString());
}

void MainWindow::RememberRecent(const QString& path) {
    QSettings settings;
    QStringList recent = settings.value(kRecentKey).toStringList();
    const QString absolute = QFileInfo(path).absoluteFilePath();
    recent.removeAll(absolute);
    recent.prepend(absolute);
    settings.setValue(kRecentKey, recent.mid(0, kRecentFiles));
}

void MainWindow::FillRecentMenu() {
    recentMenu->clear();
    const QStringList recent = QSettings().value(kRecentKey).toStringList();
    for (const QString& path : recent) {
        QAction* action = recentMenu->addAction(MenuText(QFileInfo(path).fileName()));
        action->setToolTip(path);
        action->setEnabled(QFileInfo::exists(path));
        connect(action, &QAction::triggered, this, [this, path] {
            if (MayLoseChanges()) {
                OpenLevel(path);
            }
        });
    }
    if (recent.isEmpty()) {
        recentMenu->addAction(tr("No levels yet"))->setEnabled(false);
    }
}

} // namespace stage
