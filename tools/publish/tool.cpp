#include "console/tool.h"

#include "publish/run.h"
#include "publish/system.h"

int RunTool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& errors) {
    publish::OutliveReaders();
    return publish::RunPublish(arguments, out, errors);
}
