#pragma once

#include "keys/views/LooseKeys.h"
#include "keys/views/TrackKey.h"

#include <memory>

struct LooseKeyDeleter {
    void operator()(CTrackKey* view) const { DestroyLooseView(view->context, view); }
};

/// A new view with its record, until a row takes both. Without a row both are destroyed.
using LooseKey = std::unique_ptr<CTrackKey, LooseKeyDeleter>;
