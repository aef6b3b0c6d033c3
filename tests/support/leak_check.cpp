#include "support/leak_check.h"
