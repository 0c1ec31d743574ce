#include "boarding/stay.h"
