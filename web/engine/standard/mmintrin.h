#pragma once

// Eigen includes this header of SSE but uses nothing of it. The compiler's own is for x86 alone.
