#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace publish {

/// The program publish in a process of its own. What it writes goes nowhere.
class PublishProcess {
public:
    /// `prepare` runs in the new process first.
    explicit PublishProcess(const std::vector<std::string>& arguments,
                            const std::function<void()>& prepare = {});
    ~PublishProcess();
    PublishProcess(const PublishProcess&) = delete;
    PublishProcess& operator=(const PublishProcess&) = delete;

    /// The exit status; 128 and the number of the signal that ended it.
    int Wait();
    /// Ends it by force where it has not ended.
    void Kill() const;
    bool HasEnded();

private:
    pid_t process_ = -1;
    int status_ = -1;
};

}  // namespace publish
