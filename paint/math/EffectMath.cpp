#include "paint/math/EffectMath.h"

#include "raster/Truncation.h"

unsigned char CosineProfile(unsigned char value) {
    const short degrees = TruncateToShort(value * 0.3529411764747405);
    return static_cast<unsigned char>(
        TruncateToShort((1 - ExactCos(DegreesToRadians(degrees))) * 255));
}

short ReliefThreshold(double e) {
    if (e < 4) {
        return 160;
    }
    if (e > 26) {
        return 220;
    }
    return TruncateToShort((e - 4) * 0.045454545454545456 * 60.0 + 160.0);
}
