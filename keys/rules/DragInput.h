#pragma once

/// Whether an Alt key is down at this moment: a dragged key then follows the mouse by frames.
bool IsAltDown();
