#pragma once

#include "keys/attributes/AttrRows.h"

// What the "..." of a row opens. Each is modal: what it is asked for may be gone when it returns.

void BrowseCamera(AttrBrowseRequest* request);
/// Writes the key under edit and shows the film anew where that key is one of animation.
void BrowseMeshElementName(AttrBrowseRequest* request);
void BrowseAnimation(AttrBrowseRequest* request);
void BrowseSoundFile(AttrBrowseRequest* request);
void BrowseEffect(AttrBrowseRequest* request);
void BrowseColor(AttrBrowseRequest* request);
