#include "support/clinic.h"
