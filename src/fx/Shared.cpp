#include "fx/Shared.h"
