#pragma once

#include "framework/Wnd.h"

#include <string>

/// One run of a dialog's DoDataExchange.
class FILMS_API CDataExchange {
public:
    CDataExchange(CWnd* dialog, BOOL save) : window(dialog), saveAndValidate(save) {}

    /// Ends the run; UpdateData answers FALSE and the control at fault has the focus.
    [[noreturn]] void Fail();

    CWnd* window;
    /// TRUE from the controls to the fields, FALSE the other way.
    BOOL saveAndValidate;
    int lastId = 0;
};

/// Thrown by Fail and caught by UpdateData.
struct DataExchangeFailure {};

/// Numbers must fill the whole text, or a message says what is wanted. float32 shows 6 digits, double 15.
FILMS_API void DDX_Text(CDataExchange* exchange, int id, std::string& value);
FILMS_API void DDX_Text(CDataExchange* exchange, int id, int& value);
FILMS_API void DDX_Text(CDataExchange* exchange, int id, float& value);
FILMS_API void DDX_Text(CDataExchange* exchange, int id, double& value);
/// Binds an object to a control, once.
FILMS_API void DDX_Control(CDataExchange* exchange, int id, CWnd& control);
FILMS_API void DDX_Check(CDataExchange* exchange, int id, int& value);
/// The index within the group of radio buttons that begins with id; -1 for none checked.
FILMS_API void DDX_Radio(CDataExchange* exchange, int id, int& value);
FILMS_API void DDX_LBIndex(CDataExchange* exchange, int id, int& value);
FILMS_API void DDX_CBIndex(CDataExchange* exchange, int id, int& value);
/// Behind a DDX_Text: the most characters that its control shows and takes; longer text is cut without a
/// word.
FILMS_API void DDV_MaxChars(CDataExchange* exchange, const std::string& value, int most);
