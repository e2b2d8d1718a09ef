// The mark of what the library exports; everything else stays hidden.
#pragma once

#if defined(VELTRA_REFERENCE_BUILDING)
#define VELTRA_REFERENCE_API __attribute__((visibility("default")))
#else
#define VELTRA_REFERENCE_API
#endif
