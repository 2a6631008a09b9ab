#include "console/tool.h"

#include "publish_check/run.h"

int RunTool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& errors) {
    return publish_check::RunPublishCheck(arguments, out, errors);
}
