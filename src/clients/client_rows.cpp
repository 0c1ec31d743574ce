#include "clients/client_rows.h"
