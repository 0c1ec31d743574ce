#include "clients/photos.h"
