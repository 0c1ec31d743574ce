#include "ui/draft.h"
