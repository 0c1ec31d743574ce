#include "ui/bound.h"
