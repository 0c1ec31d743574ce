#include "ui/help_line.h"
