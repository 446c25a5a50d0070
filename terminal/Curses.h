// The terminal library with its wide characters.
#pragma once

#ifndef _XOPEN_SOURCE_EXTENDED
#define _XOPEN_SOURCE_EXTENDED 1
#endif
#define NCURSES_NOMACROS 1
#include <curses.h>
