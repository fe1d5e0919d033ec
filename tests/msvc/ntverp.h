// The number of the Windows SDK, which Wine's headers lack; Boost chooses what the SDK declares by it.
#pragma once
#define VER_PRODUCTBUILD 10011
#define VER_PRODUCTBUILD_QFE 16384
