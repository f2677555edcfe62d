#include "files/AttachMovieObjectDlg.h"

#include "resources/resource.h"

CAttachMovieObjectDlg::CAttachMovieObjectDlg() : CDialog(IDD_ATTACH_OBJECT) {
}
