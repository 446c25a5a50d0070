// The terminal library with its wide characters. It defines macros for plain words; no other header of ours includes it.
#pragma once

#ifndef _XOPEN_SOURCE_EXTENDED
#define _XOPEN_SOURCE_EXTENDED 1
#endif
#define NCURSES_NOMACROS 1
#include <curses.h>
