#include <iostream>

#include "console/tool.h"

int main(int count, char* arguments[]) {
    return RunTool({arguments + 1, arguments + count}, std::cout, std::cerr);
}
