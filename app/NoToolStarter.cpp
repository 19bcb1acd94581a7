// Stands in the place of the optimising tool's starter where that is not installed, so that an export which
// asks for the tool is told. Elsewhere than on Windows a script does this.

#include <cstdio>

int main()
{
    std::fputs("tq4x: the optimising tool is not installed\n", stderr);
    return 1;
}
