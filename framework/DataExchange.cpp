#include "framework/DataExchange.h"

#include "framework/ComboBox.h"
#include "framework/Edit.h"
#include "framework/ListBox.h"
#include "framework/MessageBox.h"
#include "framework/private/NativeWindow.h"

#include <cerrno>
#include <climits>
#include <cstdlib>

void CDataExchange::Fail() {
    if (CWnd* control = window->GetDlgItem(lastId)) {
        control->SetFocus();
        control->SendMessage(EM_SETSEL, 0, -1);
    }
    throw DataExchangeFailure{};
}

BOOL CWnd::UpdateData(BOOL saveAndValidate) {
    if (!native) {
        return FALSE;
    }
    CDataExchange exchange(this, saveAndValidate);
    try {
        DoDataExchange(&exchange);
    } catch (const DataExchangeFailure&) {
        return FALSE;
    }
    return TRUE;
}

void CWnd::DoDataExchange(CDataExchange* /*exchange*/) {
}

namespace {

bool OnlySpacesFrom(const char* text) {
    return std::string(text).find_first_not_of(" \t") == std::string::npos;
}

[[noreturn]] void Complain(CDataExchange& exchange, const char* text) {
    AfxMessageBox(text, MB_ICONEXCLAMATION);
    exchange.Fail();
}

double ReadReal(CDataExchange& exchange, int id) {
    const std::string text = exchange.window->GetDlgItemText(id);
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (end == text.c_str() || !OnlySpacesFrom(end)) {
        Complain(exchange, "Please enter a number.");
    }
    return value;
}

void WriteReal(CDataExchange& exchange, int id, double value, int digits) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*g", digits, value);
    exchange.window->SetDlgItemText(id, text);
}

} // namespace

void DDX_Text(CDataExchange* exchange, int id, std::string& value) {
    exchange->lastId = id;
    if (exchange->saveAndValidate) {
        value = exchange->window->GetDlgItemText(id);
    } else {
        exchange->window->SetDlgItemText(id, value);
    }
}

void DDX_Text(CDataExchange* exchange, int id, int& value) {
    exchange->lastId = id;
    if (!exchange->saveAndValidate) {
        exchange->window->SetDlgItemText(id, std::to_string(value));
        return;
    }
    const std::string text = exchange->window->GetDlgItemText(id);
    char* end = nullptr;
    errno = 0;
    const long number = std::strtol(text.c_str(), &end, 10);
    if (end == text.c_str() || !OnlySpacesFrom(end) || errno == ERANGE || number > INT_MAX ||
        number < INT_MIN) {
        Complain(*exchange, "Please enter an integer.");
    }
    value = static_cast<int>(number);
}

void DDX_Text(CDataExchange* exchange, int id, float& value) {
    constexpr int kDigits = 6;
    exchange->lastId = id;
    if (exchange->saveAndValidate) {
        value = static_cast<float>(ReadReal(*exchange, id));
    } else {
        WriteReal(*exchange, id, static_cast<double>(value), kDigits);
    }
}

void DDX_Text(CDataExchange* exchange, int id, double& value) {
    constexpr int kDigits = 15;
    exchange->lastId = id;
    if (exchange->saveAndValidate) {
        value = ReadReal(*exchange, id);
    } else {
        WriteReal(*exchange, id, value, kDigits);
    }
}

void DDX_Control(CDataExchange* exchange, int id, CWnd& control) {
    if (!control.GetSafeHwnd()) {
        control.SubclassDlgItem(static_cast<UINT>(id), exchange->window);
    }
}

void DDX_Check(CDataExchange* exchange, int id, int& value) {
    if (exchange->saveAndValidate) {
        value = static_cast<int>(exchange->window->IsDlgButtonChecked(id));
    } else {
        exchange->window->CheckDlgButton(id, static_cast<UINT>(value));
    }
}

namespace {

// The radio buttons from `id` up to the next WS_GROUP.
std::vector<NativeWindow*> RadioGroup(const CWnd& dialog, int id) {
    std::vector<NativeWindow*> group;
    for (NativeWindow* child : dialog.GetSafeHwnd()->Children()) {
        const bool first = child->id == static_cast<UINT>(id);
        if (group.empty() && !first) {
            continue;
        }
        if (!group.empty() && (child->windowStyle & WS_GROUP)) {
            break;
        }
        const DWORD type = child->windowStyle & BS_TYPEMASK;
        if (type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON) {
            group.push_back(child);
        }
    }
    return group;
}

} // namespace

void DDX_Radio(CDataExchange* exchange, int id, int& value) {
    if (exchange->saveAndValidate) {
        value = -1;
    }
    int index = 0;
    for (NativeWindow* radio : RadioGroup(*exchange->window, id)) {
        if (!exchange->saveAndValidate) {
            radio->Send(BM_SETCHECK, index == value ? BST_CHECKED : BST_UNCHECKED, 0);
        } else if (radio->Send(BM_GETCHECK, 0, 0) == BST_CHECKED) {
            value = index;
        }
        ++index;
    }
}

void DDX_LBIndex(CDataExchange* exchange, int id, int& value) {
    CWnd* control = exchange->window->GetDlgItem(id);
    if (control && exchange->saveAndValidate) {
        value = static_cast<int>(control->SendMessage(LB_GETCURSEL));
    } else if (control) {
        control->SendMessage(LB_SETCURSEL, static_cast<WPARAM>(value));
    }
}

void DDX_CBIndex(CDataExchange* exchange, int id, int& value) {
    auto* combo = dynamic_cast<CComboBox*>(exchange->window->GetDlgItem(id));
    if (combo && exchange->saveAndValidate) {
        value = combo->GetCurSel();
    } else if (combo) {
        combo->SetCurSel(value);
    }
}

void DDV_MaxChars(CDataExchange* exchange, const std::string& value, int most) {
    CWnd* control = exchange->window->GetDlgItem(exchange->lastId);
    if (control && !exchange->saveAndValidate) {
        control->SetWindowText(value.substr(0, static_cast<std::size_t>(std::max(most, 0))));
        control->SendMessage(EM_LIMITTEXT, static_cast<WPARAM>(most));
    }
}
