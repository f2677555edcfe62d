#pragma once

#include "framework/ToolBar.h"

/// Common base of the plug-in's toolbars, so that they have a class of their own.
class CToolBarReg : public CToolBar {};
