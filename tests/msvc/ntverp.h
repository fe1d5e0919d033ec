// The version of the Windows SDK, which Wine's headers lack; by it Boost knows what the SDK declares.
#pragma once
#define VER_PRODUCTBUILD 10011
#define VER_PRODUCTBUILD_QFE 16384
