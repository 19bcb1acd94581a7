#pragma once

#include <xsi_argument.h>
