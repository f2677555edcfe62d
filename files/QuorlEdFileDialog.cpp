#include "files/QuorlEdFileDialog.h"

#include "framework/MessageBox.h"
#include "framework/Path.h"

#include <filesystem>

CQuorlEdFileDialog::CQuorlEdFileDialog(BOOL openFile, const char* defaultExtension, const char* fileName,
                                       DWORD flags, const char* filter, CWnd* parentWindow)
    : CFileDialog(openFile, defaultExtension, fileName, flags, filter, parentWindow),
      programDir(PathDirectory(GetModuleFileName())) {
}

int CQuorlEdFileDialog::DoModal() {
    if (useProgramDir) {
        ofn.lpstrInitialDir =
            ofn.lpstrFile.empty() ? programDir : PathDirectory(PathCombine(programDir, ofn.lpstrFile));
    }
    const int result = CFileDialog::DoModal();
    std::error_code ignored; // a directory that went stays behind
    std::filesystem::current_path(programDir, ignored);
    return result;
}

std::string CQuorlEdFileDialog::GetRelativePathName() const {
    return MakeRelative(GetPathName());
}

std::string CQuorlEdFileDialog::MakeRelative(const std::string& target) const {
    std::string relative;
    return PathRelativePathTo(relative, programDir, 0, target, 0) ? relative : target;
}

bool CQuorlEdFileDialog::IsFolderAllowed() const {
    std::string way;
    return requiredDir.empty() || (PathRelativePathTo(way, requiredDir, FILE_ATTRIBUTE_DIRECTORY,
                                                      GetFolderPath(), FILE_ATTRIBUTE_DIRECTORY) &&
                                   !way.starts_with(".."));
}

void CQuorlEdFileDialog::ShowDirMessage() const {
    AfxMessageBox("You must select file within directory (or its subdirectory): " + requiredDir,
                  MB_ICONEXCLAMATION);
}

void CQuorlEdFileDialog::OnFolderChange() {
    CFileDialog::OnFolderChange();
    if (!IsFolderAllowed()) {
        ShowDirMessage();
    }
}

BOOL CQuorlEdFileDialog::OnFileNameOK() {
    if (const BOOL refused = CFileDialog::OnFileNameOK()) {
        return refused;
    }
    if (IsFolderAllowed()) {
        return FALSE;
    }
    ShowDirMessage();
    return TRUE;
}
