#include "plugin/LevelWatch.h"

unsigned LevelWatch::levelNumber = 0;
