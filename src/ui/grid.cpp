#include "ui/grid.h"
