#include "console/serviceconsole.h"

int main(int argc, char** argv)
{
    return static_cast<int>(tov::console::runServiceConsole(argc, argv));
}
