#include "clients/panels.h"
