#pragma once

// Marks what a library built with hidden visibility still sees and derives from.
#define FILMS_API __attribute__((visibility("default")))
