#pragma once

#include "framework/FileDialog.h"

#include <string>

/// The plug-in's dialog for a file to open or to save to. It begins in the program's directory, leaves that
/// as the working directory, and hands out paths relative to it.
class CQuorlEdFileDialog : public CFileDialog {
public:
    /// As for the base. A file name that is not absolute counts from the program's directory.
    explicit CQuorlEdFileDialog(BOOL openFile, const char* defaultExtension = nullptr,
                                const char* fileName = nullptr,
                                DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT,
                                const char* filter = nullptr, CWnd* parentWindow = nullptr);

    /// IDOK or IDCANCEL. The working directory is the program's afterwards.
    int DoModal() override;
    /// The chosen path as seen from the program's directory.
    std::string GetRelativePathName() const;
    /// The target itself if nothing leads to it from the program's directory.
    std::string MakeRelative(const std::string& target) const;

    bool useProgramDir = true; ///< false: the dialog begins where the base puts it
    std::string programDir;    ///< with a separator at its end
    std::string requiredDir;   ///< if set, the file must be chosen in it or below

protected:
    BOOL OnFileNameOK() override;
    void OnFolderChange() override;

private:
    bool IsFolderAllowed() const;
    void ShowDirMessage() const;
};
