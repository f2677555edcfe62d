#pragma once

#include "framework/Types.h"

#include <string>
#include <vector>

class CWnd;
class QImage;

/// A window and its children as they paint themselves, shown or not.
QImage PictureOf(CWnd& window);

/// Compares a picture with `golden/NAME.png` beside the tests of a folder (a path from the root of the tree,
/// as "tests/timeline"), pixel by pixel but for the masked areas, which differ with the fonts of a machine.
/// On a failure the picture, the stored one and the differences are written to the folder for temporary files
/// that the message names. With FILMS_REMAKE_GOLDENS set to 1 the stored picture is replaced.
void ExpectGolden(const QImage& picture, const std::string& folder, const std::string& name,
                  const std::vector<CRect>& masks = {});

/// How many pixels differ, all of them for different sizes. `diff` gets a picture with those in red.
int CountDifferences(const QImage& picture, const QImage& stored, QImage* diff);
