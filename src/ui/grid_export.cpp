#include "ui/grid_export.h"
