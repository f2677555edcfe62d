#pragma once

#include "host/stage/host/MissingAssets.h"

#include <functional>
#include <QDialog>

class QLabel;
class QPushButton;
class QTreeWidget;

namespace stage {

class EditorHost;
class LevelSession;

/// The files that the open level names and that are not there, with who needs them; each can be pointed at,
/// or all be looked for in a folder. What is found goes into the level at once.
class MissingDialog : public QDialog {
    Q_OBJECT
public:
    MissingDialog(EditorHost& editorHost, LevelSession& levelSession, QWidget* parent);

    /// Asks for the file of the chosen line.
    void Find();
    /// Asks for a folder, and takes all files from it that are called as missing ones.
    void FindInFolder();

    /// Empty for no choice. The filter is a file dialog's.
    std::function<QString(const QString& title, const QString& filter)> askFile;
    std::function<QString(const QString& title)> askFolder;

    QTreeWidget* list;
    QLabel* result;

private:
    void Fill();
    void Take(const AssetPaths& paths);

    EditorHost& host;
    LevelSession& session;
    std::vector<MissingAsset> missing;
    QPushButton* find;
    QPushButton* findInFolder;
};

} // namespace stage
