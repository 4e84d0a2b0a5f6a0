// Proves that a program of this architecture really runs here: a 32-bit
// program under a Wine that cannot run it "ends" without printing this.
#include <stdio.h>

int main()
{
#if defined(_M_X64) || defined(__x86_64__)
    printf("probe_arch x86_64\n");
#else
    printf("probe_arch i686\n");
#endif
    return 42;
}
