#include "ui/boxes.h"
