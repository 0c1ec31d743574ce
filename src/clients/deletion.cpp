#include "clients/deletion.h"
