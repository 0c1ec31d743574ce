#include "messages/mail_account.h"
