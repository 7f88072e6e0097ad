#include "host/Export.h"

#ifndef RUNTIME_EXPORT_H
#error "the runtime does not find its own header"
#endif
#if __cplusplus > 201703L
#error "the headers need C++17, but the program is compiled as a later C++"
#endif
