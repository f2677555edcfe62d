#include "timeline/AdjustTimeDlg.h"

#include "framework/DataExchange.h"
#include "keys/properties/NumberText.h"
#include "plugin/session/FilmSession.h"
#include "resources/resource.h"
#include "timeline/FilmsMainCtrl.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int kMostCurrentChars = 10;

std::string Thousandths(float seconds) {
    return FixedText(seconds, /*width*/ 0, /*decimals*/ 3);
}

/// Required: what is no number counts as 0, without a message.
float SecondsFrom(const std::string& text) {
    const float seconds = FloatFromText(text.c_str());
    return std::isfinite(seconds) ? seconds : 0.0f;
}

} // namespace

BEGIN_MESSAGE_MAP(CAdjustTimeDlg, CDialog)
ON_BN_CLICKED(IDC_ADJUST_END, &CAdjustTimeDlg::OnEndCheck)
ON_BN_CLICKED(IDC_ADJUST_INSERT, &CAdjustTimeDlg::OnInsert)
END_MESSAGE_MAP()

CAdjustTimeDlg::CAdjustTimeDlg(CFilmsMainCtrl* mainControl)
    : CDialog(IDD_ADJUST_TIME, mainControl), control(mainControl) {
}

void CAdjustTimeDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Control(exchange, IDC_ADJUST_FROM, fromEdit);
    DDX_Control(exchange, IDC_ADJUST_END, endCheck);
    DDX_Text(exchange, IDC_ADJUST_LENGTH, lengthText);
    DDX_Text(exchange, IDC_ADJUST_CURRENT, currentText);
    DDV_MaxChars(exchange, currentText, kMostCurrentChars);
    DDX_Text(exchange, IDC_ADJUST_FROM, fromText);
    DDX_Text(exchange, IDC_ADJUST_TO, toText);
    DDX_Check(exchange, IDC_ADJUST_END, toEnd);
}

BOOL CAdjustTimeDlg::OnInitDialog() {
    NoteTarget();
    current = control->currentTime;
    lengthText = Thousandths(length);
    currentText = Thousandths(current);
    fromText = Thousandths(from);
    toText = Thousandths(to);
    const BOOL result = CDialog::OnInitDialog();
    OnEndCheck();
    return result;
}

void CAdjustTimeDlg::OnEndCheck() {
    toEnd = endCheck.GetCheck() != 0 ? 1 : 0;
    fromEdit.EnableWindow(toEnd == 0);
}

void CAdjustTimeDlg::ReadNumbers() {
    current = SecondsFrom(currentText); // Required: the time that is shown, not the cursor's own
    length = SecondsFrom(lengthText);
    from = toEnd == 1 ? control->movieEnd - current : SecondsFrom(fromText);
    to = SecondsFrom(toText);
}

void CAdjustTimeDlg::OnInsert() {
    if (!UpdateData(TRUE)) {
        return;
    }
    ReadNumbers();
    if (!FindTarget()) {
        EndDialog(IDCANCEL);
        return;
    }
    const Watch<CAdjustTimeDlg> self(this);
    if (from != 0.0f || to != 0.0f) {
        control->StretchTime(current, from, to);
    }
    control->InsertTime(current, length);
    if (self.IsAlive()) {
        EndDialog(IDOK);
    }
}

void CAdjustTimeDlg::NoteTarget() {
    const CTrackCtrl* menuRow = control->menuRow;
    film = control->session.GetCurrentFilm();
    forOneRow = menuRow != nullptr;
    row = forOneRow ? RowHandle{menuRow->track, menuRow->kind, menuRow->subIndex} : RowHandle{};
    rowName = forOneRow ? menuRow->name : std::string();
}

/// The film may have been left or shown anew since, and the row may have gone. An edit that was meant for a
/// row never reaches the others.
bool CAdjustTimeDlg::FindTarget() const {
    if (film == nullptr || film != control->session.GetCurrentFilm()) {
        return false;
    }
    control->menuRow = nullptr;
    if (!forOneRow) {
        return true;
    }
    const auto found = std::ranges::find_if(control->tracks, [this](const CTrackCtrl* candidate) {
        return candidate->track == row.track && candidate->kind == row.kind &&
               candidate->subIndex == row.subIndex && candidate->name == rowName;
    });
    control->menuRow = found != control->tracks.end() ? *found : nullptr;
    return control->menuRow != nullptr;
}

void CAdjustTimeDlg::LeaveFilm() {
    film = nullptr;
    if (GetSafeHwnd() != nullptr) {
        EndDialog(IDCANCEL);
    }
}
