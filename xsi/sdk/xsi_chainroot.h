#pragma once

#include <xsi_chainelement.h>
