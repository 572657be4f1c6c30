// Opening a module, and callbacks.
#include "adapters/c/Session.h"

#include "adapters/c/Structs.h"
#include "host/core/Installed.h"

namespace tzh {
namespace {

std::string withoutLineEnd(std::string_view text) {
    if (!text.empty() && text.back() == '\n') text.remove_suffix(1);
    return std::string(text);
}

}  // namespace

// One piece of work that is told to the progress callback.
class CallbackObserver::Told : public tzhost::Observer::Work {
  public:
    explicit Told(CallbackObserver& observer) : observer_(observer) {}
    void update(uint64_t done, uint64_t count) noexcept override {
        if (!observer_.isListening() || observer_.cancelled()) return;
        observer_.answered(observer_.callbacks_.progress(done, count, observer_.callbacks_.payload));
    }

  private:
    CallbackObserver& observer_;
};

std::unique_ptr<tzhost::Observer::Work> CallbackObserver::begin(const std::string& /*title*/) {
    if (!isListening() || !callbacks_.progress) return nullptr;
    auto told = std::make_unique<Told>(*this);
    told->update(0, 0);
    return told;
}

void CallbackObserver::message(const std::string& text) {
    if (isListening() && callbacks_.message) answered(callbacks_.message(text.c_str(), callbacks_.payload));
}

void CallbackObserver::log(const tzhost::LogLine& line) {
    if (!isListening() || !callbacks_.log) return;
    answered(callbacks_.log(withoutLineEnd(line.text).c_str(), callbacks_.payload));
}

// The first stop counts.
void CallbackObserver::answered(int32_t value) {
    int32_t none = 0;
    if (value > 0) stopped_.compare_exchange_strong(none, value);
}

CallbackObserver::Scope::Scope(CallbackObserver& observer, const TzhCallbacks* callbacks)
    : observer_(observer) {
    if (observer.isListening()) throw Refused{TZH_INVALID, "called from within a callback"};
    observer.callbacks_ = copyIn(callbacks);
    observer.stopped_ = 0;
    observer.thread_ = std::this_thread::get_id();
}

CallbackObserver::Scope::~Scope() {
    observer_.thread_ = std::thread::id();
    observer_.callbacks_ = {};
    observer_.stopped_ = 0;
}

void CallbackObserver::Scope::check() const {
    const int32_t value = observer_.stopped_;
    if (value != 0) throw Stopped{value};
}

void SessionState::requireThread() const {
    if (std::this_thread::get_id() != thread) {
        throw Refused{TZH_WRONG_THREAD, "called on another thread than the session's"};
    }
}

}  // namespace tzh

uint32_t tzh_version(void) {
    return (uint32_t{TZHOST_VERSION_MAJOR} << 16U) | TZHOST_VERSION_MINOR;
}

TzhStatus tzh_session_open(TzhSession** session, const char* module) {
    if (session) *session = nullptr;
    return tzh::guarded([&] {
        tzh::require(session, "session is NULL");
        const std::string_view named = tzh::textOf(module, "module");
        const std::string file = named.empty() ? tzhost::defaultModule() : std::string(named);
        auto opened = std::make_unique<TzhSession>();
        opened->state = std::make_shared<tzh::SessionState>(file);
        *session = opened.release();
    });
}

void tzh_session_free(TzhSession* session) {
    delete session;
}
