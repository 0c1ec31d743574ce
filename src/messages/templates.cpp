#include "messages/templates.h"
