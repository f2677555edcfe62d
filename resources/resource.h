#pragma once

/* Numbers of the library's resources. A number may stand for a menu, a dialog, a string and a control at once:
   resources are looked up by type and number. */

/* Toolbars (also the bitmap of the same number; the bitmap for twice the scale is 10000 higher) */
#define IDR_FILMS_TOOLBAR 1740

/* Menus */
#define IDR_FILMS_MENU 1756

/* Dialogs */
#define IDD_FILMS_VIEW 1744
#define IDD_MOVIES 1745

/* Controls of the panel */
#define IDC_PANEL_TABS 1743
#define IDC_MOVIE_LIST 1744
#define IDC_MOVIE_ADD 1745
#define IDC_MOVIE_DELETE 1746
#define IDC_MOVIE_VALIDATE 1767

/* Commands */
#define IDC_MOVIES 1742
#define IDC_ANIMATE_OBJECT 36823
#define IDC_ATTACH_MOVIE 36824
#define IDC_DETACH_MOVIE 36825
#define IDC_SET_LINK_OBJECT 36845
#define IDC_CREATE_CAMERA_FRAME 36846
#define IDC_TO_VIRTUAL_OBJECT 36847
#define IDC_TO_NORMAL_OBJECT 36853
#define IDC_ATTACH_TO_OBJECT 36874
