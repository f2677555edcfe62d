#include "files/KeptNumber.h"

#include "framework/DataExchange.h"
#include "framework/MessageBox.h"

#include <cmath>

void KeptNumber::Exchange(CDataExchange* exchange, int id, float& value) {
    const CWnd& dialog = *exchange->window;
    if (!exchange->saveAndValidate) {
        DDX_Text(exchange, id, value);
        shown = dialog.GetDlgItemText(id);
        return;
    }
    if (dialog.GetDlgItemText(id) == shown) {
        exchange->lastId = id;
        return;
    }
    float typed = 0.0f;
    DDX_Text(exchange, id, typed);
    if (!std::isfinite(typed)) {
        AfxMessageBox("Please enter a number.", MB_ICONEXCLAMATION);
        exchange->Fail();
    }
    value = typed;
}
