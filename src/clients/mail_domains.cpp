#include "clients/mail_domains.h"
