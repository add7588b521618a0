// All public headers of the library of ready-made hosts.
#pragma once

#include "tessaluna/ready/search/SearchQuestions.h"
#include "tessaluna/ready/search/SearchRow.h"
#include "tessaluna/ready/search/matchedLetters.h"
