#include "clients/registry.h"
