#pragma once

#include "framework/Wnd.h"

#include <string>

inline constexpr DWORD OFN_OVERWRITEPROMPT = 2, OFN_HIDEREADONLY = 4, OFN_PATHMUSTEXIST = 0x800,
                       OFN_FILEMUSTEXIST = 0x1000;

struct OPENFILENAME {
    std::string lpstrFile;       // the name to begin with
    std::string lpstrInitialDir; // the folder to begin in; empty for that of the file
    std::string lpstrDefExt;     // with or without a dot; added to a name without an extension
    std::string lpstrFilter;     // "Name (*.ext)|*.ext|...||"
    std::string lpstrTitle;
    DWORD Flags = 0;
};

/// Asks for a file to open or to save to.
class FILMS_API CFileDialog : public CWnd {
    DECLARE_DYNAMIC(CFileDialog)
public:
    explicit CFileDialog(BOOL openFile, const char* defaultExtension = nullptr,
                         const char* fileName = nullptr, DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT,
                         const char* filter = nullptr, CWnd* parentWindow = nullptr);

    /// IDOK or IDCANCEL.
    virtual int DoModal();
    std::string GetPathName() const { return path; }
    std::string GetFileName() const;
    /// The folder on show.
    std::string GetFolderPath() const { return folder; }
    /// Answers for the user in a test: the path that was typed or clicked.
    void SetPathName(const std::string& chosen);
    BOOL IsOpenDialog() const { return isOpen; }

    OPENFILENAME ofn;

protected:
    /// Non-zero keeps the dialog open.
    virtual BOOL OnFileNameOK() { return FALSE; }
    virtual void OnFolderChange() {}

private:
    friend class FileDialogWindow;

    bool Accept(const std::string& chosen);
    void EnterFolder(const std::string& entered);
    std::string WithExtension(const std::string& chosen) const;

    BOOL isOpen;
    CWnd* owner;
    std::string path;
    std::string folder;
};
