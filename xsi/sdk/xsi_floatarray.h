#pragma once

#include <xsi_array.h>
