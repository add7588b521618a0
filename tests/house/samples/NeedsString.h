// Wrong on purpose: it uses a type that it does not include. The check of the headers must find that.
#pragma once

inline std::string nameOfNothing() { return {}; }
