#pragma once

// Marks what the library shows to the outside; everything else is hidden.
#define TQLIB_API __attribute__((visibility("default")))

// Marks members of a shown class that only the library itself calls.
#define TQLIB_INTERNAL __attribute__((visibility("hidden")))
