// Uses the installed library through its umbrella header.
#include <zqmath.h>

#include <cstdio>

int main() {
    int remainder = 0;
    int exponent = 0;
    const int power = BinaryPower(1023, &remainder, &exponent);
    CMathDLL library(nullptr);
    std::printf("%d %d %d\n%s", power, remainder, exponent, library.Signature());
    return power == 512 && remainder == 511 && exponent == 9 ? 0 : 1;
}
