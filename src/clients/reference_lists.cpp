#include "clients/reference_lists.h"
