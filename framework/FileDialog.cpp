#include "framework/FileDialog.h"

#include "framework/Path.h"
#include "framework/private/NativeWindow.h"
#include "framework/private/OwnedDialog.h"
#include "framework/QtBridge.h"
#include "framework/TestHooks.h"

#include <QFileDialog>
#include <QGridLayout>
#include <QSplitter>

#include <utility>

IMPLEMENT_DYNAMIC(CFileDialog, CWnd)

// The toolkit's own dialog, never the desktop's: only that asks before it changes folder or closes.
class FileDialogWindow : public QFileDialog {
public:
    FileDialogWindow(CFileDialog& dialog, QWidget* parent) : QFileDialog(parent), owner(dialog) {
        setOption(QFileDialog::DontUseNativeDialog);
        connect(this, &QFileDialog::directoryEntered, this,
                [this](const QString& entered) { owner.EnterFolder(entered.toStdString()); });
    }

protected:
    void done(int result) override {
        const QStringList files = selectedFiles();
        if (result == QDialog::Accepted && !files.isEmpty() && !owner.Accept(files.front().toStdString())) {
            return;
        }
        QFileDialog::done(result);
    }

private:
    CFileDialog& owner;
};

CFileDialog::CFileDialog(BOOL openFile, const char* defaultExtension, const char* fileName, DWORD flags,
                         const char* filter, CWnd* parentWindow)
    : isOpen(openFile), owner(parentWindow) {
    ofn.lpstrDefExt = defaultExtension ? defaultExtension : "";
    ofn.lpstrFile = fileName ? fileName : "";
    ofn.lpstrFilter = filter ? filter : "";
    ofn.Flags = flags;
}

std::string CFileDialog::GetFileName() const {
    return path.substr(PathDirectory(path).size());
}

void CFileDialog::SetPathName(const std::string& chosen) {
    path = chosen;
}

std::string CFileDialog::WithExtension(const std::string& chosen) const {
    const std::string name = chosen.substr(PathDirectory(chosen).size());
    const std::size_t dot = ofn.lpstrDefExt.find_first_not_of('.');
    if (dot == std::string::npos || name.empty() || name.find('.') != std::string::npos) {
        return chosen;
    }
    return chosen + "." + ofn.lpstrDefExt.substr(dot);
}

bool CFileDialog::Accept(const std::string& chosen) {
    path = WithExtension(chosen);
    folder = PathDirectory(path);
    return !OnFileNameOK();
}

void CFileDialog::EnterFolder(const std::string& entered) {
    folder = entered;
    OnFolderChange();
}

namespace {

// "A (*.a)|*.a|All|*.*||" becomes a list of names that carry their pattern in brackets.
QStringList NameFilters(const std::string& filter) {
    const QStringList fields = QString::fromStdString(filter).split('|');
    QStringList filters;
    for (int i = 0; i + 1 < fields.size() && !fields[i].isEmpty(); i += 2) {
        const QString name = fields[i].left(fields[i].indexOf('(')).trimmed();
        filters.append(name + " (" + QString(fields[i + 1]).replace(';', ' ') + ")");
    }
    return filters;
}

std::function<QWidget*(QFileDialog&)> filePreview;

// To the right of everything, as high as the list: not in the list's splitter, whose state the toolkit
// remembers for dialogs that have no preview too.
void PutBesideList(QFileDialog& dialog, QWidget& widget) {
    auto* grid = qobject_cast<QGridLayout*>(dialog.layout());
    const auto* list = dialog.findChild<QSplitter*>();
    if (!grid || !list) {
        widget.setParent(&dialog);
        return;
    }
    int row = 0;
    int column = 0;
    int rows = 1;
    int columns = 1;
    grid->getItemPosition(grid->indexOf(list), &row, &column, &rows, &columns);
    grid->addWidget(&widget, row, grid->columnCount(), rows, 1);
}

void AddPreview(QFileDialog& dialog) {
    if (QWidget* widget = filePreview ? filePreview(dialog) : nullptr) {
        PutBesideList(dialog, *widget);
    }
}

} // namespace

void SetFilePreview(std::function<QWidget*(QFileDialog& dialog)> maker) {
    filePreview = std::move(maker);
}

int CFileDialog::DoModal() {
    folder = ofn.lpstrInitialDir.empty() ? PathDirectory(ofn.lpstrFile) : ofn.lpstrInitialDir;
    if (Hooks().fileDialog) {
        const int result = Hooks().fileDialog(*this);
        return result == IDOK && Accept(path) ? IDOK : IDCANCEL;
    }
    if (!QtAlive()) {
        return IDCANCEL;
    }
    const OwnedDialog<FileDialogWindow> window(*this, owner ? NativeWidget(*owner) : nullptr);
    window->setAcceptMode(isOpen ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    window->setFileMode(isOpen ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    window->setOption(QFileDialog::DontConfirmOverwrite, !(ofn.Flags & OFN_OVERWRITEPROMPT));
    window->setNameFilters(NameFilters(ofn.lpstrFilter));
    // Known to the toolkit too, so that it asks about the file that will be overwritten.
    window->setDefaultSuffix(QString::fromStdString(ofn.lpstrDefExt));
    window->setDirectory(QString::fromStdString(folder));
    if (!ofn.lpstrTitle.empty()) {
        window->setWindowTitle(QString::fromStdString(ofn.lpstrTitle));
    }
    if (!ofn.lpstrFile.empty()) {
        window->selectFile(QString::fromStdString(ofn.lpstrFile.substr(PathDirectory(ofn.lpstrFile).size())));
    }
    if (isOpen) {
        AddPreview(*window);
    }
    return window->exec() == QDialog::Accepted ? IDOK : IDCANCEL;
}
