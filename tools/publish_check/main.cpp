#include <iostream>

#include "publish_check/run.h"

int main(int count, char* arguments[]) {
    return publish_check::RunPublishCheck({arguments + 1, arguments + count}, std::cout, std::cerr);
}
