#include "console/tool.h"

#include "publish/run.h"

int RunTool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& errors) {
    return publish::RunPublish(arguments, out, errors);
}
