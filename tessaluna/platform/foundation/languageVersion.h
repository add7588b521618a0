// Every header of the library reaches this one, so that a compiler of an older language gives one reason first.
#pragma once

#if __cplusplus < 202002L
#error "TessalunaUIKit needs C++20 or newer, such as -std=c++20"
#endif
