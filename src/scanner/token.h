// The tokens that lexer and grammar share. The grammar numbers them.
#pragma once

#include "grammar.tab.h"
