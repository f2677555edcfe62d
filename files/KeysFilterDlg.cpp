#include "files/KeysFilterDlg.h"

#include "files/QuorlEdFileDialog.h"
#include "framework/DataExchange.h"
#include "framework/MessageBox.h"
#include "keys/rules/KeyKinds.h"
#include "keys/rules/KeyParamsFile.h"
#include "plugin/contract/FilmTrack.h"
#include "plugin/contract/KeyKindTable.h"
#include "plugin/session/FilmSession.h"
#include "resources/resource.h"
#include "timeline/rows/TimelineContext.h"

namespace {

constexpr const char* kExtension = ".fkd";
constexpr const char* kFilter = "Film keys params files (*.fkd)|*.fkd||";

constexpr int kTrackClasses[] = {ClassId::LevelTrack, ClassId::ObjectTrack, ClassId::GLLightTrack,
                                 ClassId::DynLightTrack, ClassId::CameraTrack};

} // namespace

BEGIN_MESSAGE_MAP(CKeysFilterDlg, CDialog)
ON_BN_CLICKED(IDC_KEYS_DEFAULTS, &CKeysFilterDlg::OnDefaults)
ON_BN_CLICKED(IDC_KEYS_EXPORT, &CKeysFilterDlg::OnExport)
ON_BN_CLICKED(IDC_KEYS_IMPORT, &CKeysFilterDlg::OnImport)
END_MESSAGE_MAP()

CKeysFilterDlg::CKeysFilterDlg(const FilmSession& shown, CWnd* parentWnd)
    : CDialog(IDD_KEYS_FILTER, parentWnd), session(shown) {
    list.params = &params;
}

void CKeysFilterDlg::SetTrack(CFilmTrack* track) {
    available.fill(0);
    for (const int classId : kTrackClasses) {
        const unsigned bit = track != nullptr && track->IsA(classId) ? TrackBitOf(classId) : 0u;
        for (std::size_t kind = 0; kind < available.size(); ++kind) {
            available[kind] |= (kKeyKinds[kind].tracks & bit) != 0 ? 1 : 0;
        }
    }
}

void CKeysFilterDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_KEY_KINDS, list);
    DDX_Check(exchange, IDC_APPLY_TO_ALL, applyToAll);
}

BOOL CKeysFilterDlg::OnInitDialog() {
    const BOOL result = CDialog::OnInitDialog();
    FillList();
    list.CreateControls();
    return result;
}

void CKeysFilterDlg::FillList() {
    const int selected = list.GetCurSel();
    const UINT_PTR kept = selected != LB_ERR ? list.GetItemData(selected) : available.size();
    list.SetRedraw(FALSE);
    list.ResetContent();
    for (std::size_t kind = 0; kind < available.size(); ++kind) {
        if (available[kind] == 0) {
            continue;
        }
        const int line = list.AddString(GetKeyKindName(static_cast<int>(kind)));
        list.SetItemData(line, kind);
        if (kind == kept) {
            list.SetCurSel(line);
        }
    }
    list.SetRedraw(TRUE);
}

/// Required: with a file that can't be read the main control gets the built-in values, and the dialog keeps
/// what it has but for what was read before the fault.
void CKeysFilterDlg::OnDefaults() {
    TimelineContext* control = TimelineOf(session);
    if (control == nullptr) {
        return;
    }
    KeyKindParamsTable own = control->keyParams;
    LoadDefaultKeyParams(session.editor, &params, own); // may tell the user
    control = TimelineOf(session);
    if (control != nullptr) {
        control->TakeKeyLooks(own);
    }
    if (list.GetSafeHwnd() == nullptr) {
        return;
    }
    list.DestroyControls();
    FillList();
    list.CreateControls();
}

/// False on Cancel, and when the dialog went meanwhile.
bool CKeysFilterDlg::AskForFile(bool open, std::string& path) {
    CQuorlEdFileDialog dialog(open ? TRUE : FALSE, kExtension, nullptr,
                              OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, kFilter, this);
    if (dialog.DoModal() != IDOK || GetSafeHwnd() == nullptr) {
        return false;
    }
    path = dialog.GetPathName();
    return true;
}

/// Required: the main control keeps the parameters, even if the dialog is cancelled later.
void CKeysFilterDlg::OnExport() {
    std::string path;
    if (!AskForFile(/*open*/ false, path)) {
        return;
    }
    if (TimelineContext* control = TimelineOf(session)) {
        control->TakeKeyLooks(params);
    }
    if (!SaveKeyParamsFile(path, params)) {
        AfxMessageBox("Export failed");
    }
}

/// Required: the main control keeps what was read, even if the dialog is cancelled later, and also what
/// stands before a fault in the file.
void CKeysFilterDlg::OnImport() {
    std::string path;
    if (!AskForFile(/*open*/ true, path)) {
        return;
    }
    TimelineContext* control = TimelineOf(session);
    KeyKindParamsTable read = control != nullptr ? control->keyParams : params;
    const bool isWhole = LoadKeyParamsFile(path.c_str(), &read);
    if (control != nullptr) {
        control->TakeKeyLooks(read);
    }
    if (!isWhole) {
        AfxMessageBox("Import failed");
        return;
    }
    params = read;
    list.ShowFlags();
    list.Invalidate();
}
