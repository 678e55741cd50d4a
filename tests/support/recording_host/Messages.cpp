#include "CM/host/Messages.h"

#include "CM/host/LogTrace.h"
#include "tests/support/recording_host/RecordingHost.h"

namespace {

int answer() {
    recording::MessageState &messages = RecordingHost::current().messages;
    if (messages.onShow) {
        messages.onShow();
    }
    if (messages.answers.empty()) {
        return messages.defaultAnswer;
    }
    const int given = messages.answers.front();
    messages.answers.pop_front();
    return given;
}

} // namespace

void notifyUser(const CString &text, MessageLevel level) {
    RecordingHost &host = RecordingHost::current();
    host.note("notify: " + text);
    host.messages.shown.push_back({text, 0, level, false, {}});
}

int notifyUserAndAsk(const CString &text, unsigned int flags, int /*reserved*/, MessageLevel level) {
    RecordingHost &host = RecordingHost::current();
    host.note("ask " + std::to_string(flags) + ": " + text);
    host.messages.shown.push_back({text, flags, level, true, {}});
    return answer();
}

int OneTimeMessageBox(const CString &title, const CString &text, const CString &checkBoxText, int number,
                      const CString &key, unsigned int flags, int last) {
    RecordingHost &host = RecordingHost::current();
    CString call;
    call.Format("ask once %u key=%s title=%s box=%s %d %d: %s", flags, key.c_str(), title.c_str(),
                checkBoxText.c_str(), number, last, text.c_str());
    host.note(call);
    host.messages.shown.push_back({text, flags, 0, true, key});
    return answer();
}

SilenceMessageObject::SilenceMessageObject(int flag) {
    ++RecordingHost::current().messages.silenced;
    RecordingHost::current().note("silence start flag=" + std::to_string(flag));
}
SilenceMessageObject::~SilenceMessageObject() {
    --RecordingHost::current().messages.silenced;
    RecordingHost::current().note("silence end");
}

LogTrace::Log::Log(int name) : name_(name) { ++RecordingHost::current().logsOpen; }
LogTrace::Log::~Log() { --RecordingHost::current().logsOpen; }

void LogTrace::Log::Min(const char *sourcePath, int line, const CString &text) {
    RecordingHost &host = RecordingHost::current();
    host.logLines.push_back({name_, sourcePath, line, text});
    CString call;
    call.Format("log %d %s: %s", name_, sourcePath, text.c_str());
    host.note(call);
}
