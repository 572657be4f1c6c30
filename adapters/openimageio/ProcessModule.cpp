#include "adapters/openimageio/ProcessModule.h"

#include <chrono>
#include <mutex>
#include <optional>
#include <utility>

#include "host/ModuleLibrary.h"
#include "host/Refusal.h"
#include "host/core/Installed.h"
#include "hostsdk/CTzError.h"

namespace tzoiio {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kKept(1);

// Never ended: caches of the program's may ask for tiles, and let go of images, until its last static object
// is gone.
const tzhost::Session& session() {
    static const auto* const kSession = new tzhost::Session(tzhost::defaultModule());
    return *kSession;
}

struct Unread {
    std::mutex lock;
    std::optional<OpenedDrawing> drawing;
    Clock::time_point closedAt;
};

// Puts a drawing in the place of the one that was closed unread. Returns that, if it was not long ago.
std::optional<OpenedDrawing> exchangeUnread(std::optional<OpenedDrawing> next) {
    static auto* const kUnread = new Unread;  // never ended, as its drawing is the session's
    const std::lock_guard held(kUnread->lock);
    std::optional<OpenedDrawing> before = std::exchange(kUnread->drawing, std::move(next));
    const Clock::time_point closedAt = std::exchange(kUnread->closedAt, Clock::now());
    return Clock::now() - closedAt <= kKept ? std::move(before) : std::nullopt;
}

// Whether a change from now on is sure to give the file another state: some file systems count time in steps
// of two seconds.
bool isSettled(const tzhost::FileState& state) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return now - std::chrono::seconds(state.seconds) > std::chrono::seconds(3);
}

}  // namespace

OpenedDrawing openDrawing(const OpenOptions& options) {
    const tzhost::FileState state = tzhost::FileState::of(options.file);
    if (std::optional<OpenedDrawing> closed = exchangeUnread({})) {
        if (closed->file == options.file && closed->normalize == options.normalize && closed->state == state)
            return *std::move(closed);
    }
    const tzhost::Drawing drawing = options.normalize
                                        ? tzhost::Drawing::normalized(options.file, tzhost::Purpose::kImage)
                                        : tzhost::Drawing(options.file);
    return {options.file, options.normalize, state,
            tzhost::explainingRefusal(drawing, tzhost::Purpose::kImage,
                                      [&] { return tzhost::loadImage(session().host, drawing); })};
}

void closeUnread(OpenedDrawing drawing) noexcept {
    // One that cannot be kept is opened anew.
    static_cast<void>(tzGate([&] {
        if (isSettled(drawing.state)) exchangeUnread(std::move(drawing));
    }));
}

}  // namespace tzoiio
