// The mark of what the host library exports; everything else stays hidden.
#pragma once

#if defined(VELTRA_HOST_BUILDING)
#define VELTRA_HOST_API __attribute__((visibility("default")))
#else
#define VELTRA_HOST_API
#endif
