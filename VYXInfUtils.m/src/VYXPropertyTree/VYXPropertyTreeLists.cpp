#include "VYXPropertyTreeLists.h"

template class KORListVal<vyx_bool>;
template class KORListVal<vyx_int64_t>;
template class KORListVal<VYXPropertyTree>;
