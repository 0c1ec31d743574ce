#include "clients/dialling.h"
