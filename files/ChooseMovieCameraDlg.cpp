#include "files/ChooseMovieCameraDlg.h"

#include "framework/DataExchange.h"
#include "plugin/contract/Film.h"
#include "plugin/contract/FilmTrack.h"
#include "resources/resource.h"

BEGIN_MESSAGE_MAP(CChooseMovieCameraDlg, CDialog)
ON_LBN_DBLCLK(IDC_CAMERA_LIST, &CChooseMovieCameraDlg::OnOK)
END_MESSAGE_MAP()

CChooseMovieCameraDlg::CChooseMovieCameraDlg(CWnd* parentWnd) : CDialog(IDD_CHOOSE_CAMERA, parentWnd) {
}

void CChooseMovieCameraDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_CAMERA_LIST, list);
}

BOOL CChooseMovieCameraDlg::OnInitDialog() {
    const BOOL result = CDialog::OnInitDialog();
    FillList();
    SelectName();
    return result;
}

void CChooseMovieCameraDlg::FillList() {
    list.SetRedraw(false);
    list.ResetContent();
    if (film != nullptr) {
        for (CFilmTrack* track : film->tracks) {
            if (const CFilmCameraTrack* camera = AsCameraTrack(track)) {
                list.AddString(camera->cameraName);
            }
        }
    }
    list.SetRedraw(true);
}

void CChooseMovieCameraDlg::SelectName() {
    if (name.empty()) {
        return; // a line would be found: every name begins with nothing
    }
    for (int line = 0; line < list.GetCount(); ++line) {
        if (list.GetText(line) == name) {
            list.SetCurSel(line);
            return;
        }
    }
    list.SelectString(/*after*/ -1, name);
}

void CChooseMovieCameraDlg::OnOK() {
    const int line = list.GetCurSel();
    name = line != LB_ERR ? list.GetText(line) : std::string();
    CDialog::OnOK();
}
