// The workbench host. The widget layer it shows does not exist yet: for now it only says so.
#include <cstdio>

int main()
{
    std::puts("tessel-workbench: placeholder. The widget layer and the gallery are not built yet.");
    return 0;
}
