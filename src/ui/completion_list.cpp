#include "ui/completion_list.h"
