#include "providers/subversion/Context.h"

#include "providers/subversion/Failure.h"
#include "providers/subversion/Runtime.h"

#include <svn_cmdline.h>
#include <svn_config.h>
#include <svn_hash.h>

#include <filesystem>

namespace svnscc {

namespace {

const char *orNull(const std::string &text) { return text.empty() ? nullptr : text.c_str(); }

} // namespace

Context::Context() : pool_((prepareRuntime(), nullptr)), settings_(readSettings()) {
    check(svn_config_get_config(&configuration_, orNull(settings_.configDirectory), pool_.get()));
    setUser({});
}

Context::~Context() { close(); }

void Context::setUser(const std::string &user) {
    user_ = user.empty() ? settings_.user : user;
    auto *config = static_cast<svn_config_t *>(svn_hash_gets(configuration_, SVN_CONFIG_CATEGORY_CONFIG));
    const svn_boolean_t isNonInteractive = TRUE; // the host owns the terminal, if there is one
    check(svn_cmdline_create_auth_baton2(&credentials_, isNonInteractive, orNull(user_), nullptr,
                                         orNull(settings_.configDirectory), FALSE, FALSE, FALSE, FALSE, FALSE,
                                         FALSE, config, nullptr, nullptr, pool_.get()));
}

const Project &Context::project() const {
    if (!project_) {
        throw Failure(SCC_E_PROJNOTOPEN, "No project is open.");
    }
    return *project_;
}

void Context::close() {
    project_.reset();
    output_.setFunction(nullptr);
    if (!taskListFile.empty()) {
        std::error_code ignored;
        std::filesystem::remove(taskListFile, ignored);
        taskListFile.clear();
    }
}

} // namespace svnscc
