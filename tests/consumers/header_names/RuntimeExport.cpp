#include "host/Export.h"

#ifndef RUNTIME_EXPORT_H
#error "the runtime does not find its own header"
#endif
