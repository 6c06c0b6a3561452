#include "cloudclient.h"
