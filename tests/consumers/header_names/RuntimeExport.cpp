#include "host/Export.h"

#ifndef RUNTIME_EXPORT_H
#error "the runtime does not find its own header"
#endif
#if __cplusplus > 201703L
#error "C++17 is what the headers need, and this program asked for no more"
#endif
