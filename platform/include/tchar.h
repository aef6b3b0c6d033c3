#pragma once
#include "zel/win/types.h"
