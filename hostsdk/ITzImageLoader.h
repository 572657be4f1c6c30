// Opening a file as an image: the interface of image loader servers, and the record that host and loader fill
// together.
#pragma once

#include "hostsdk/ITzImage.h"

// What an image loader says of the image that it would deliver.
struct TzImageTarget {
    TzPixelFormat format;
    uint32_t width;  // in pixels, the file's own size; the image may be finer
    uint32_t height;
    uint32_t colours;  // the number of palette entries; 0: no palette
};
static_assert(sizeof(TzImageTarget) == 16 && std::is_trivial_v<TzImageTarget>);

// The flags of a load access.
constexpr uint32_t kTzLoadOneStep = 1;  // load() delivers the whole target at once

// One file on its way through a loader. The host fills in the file name and zeroes the rest; recognise()
// fills in the rest. All texts and pointers are borrowed: the file name from the host, for as long as it uses
// the record; the target from the loader, until its next recognise() or its end; the format name is static.
struct TzLoadAccess {
    TzText fileName;
    uint32_t targetType;  // the type service's code of what load() would deliver
    uint32_t flags;
    const TzImageTarget* target;
    TzText formatName;  // "SVG"
};
static_assert(sizeof(TzLoadAccess) == 48 && std::is_trivial_v<TzLoadAccess> &&
              std::is_standard_layout_v<TzLoadAccess>);

// A one-step image loader. One object serves one thread at a time; objects of a server whose tag
// "loader.threadsafe" is "Yes" may be spawned and used on any thread, several at once.
class ITzImageLoader : public ITzObject {
  public:
    static constexpr char kId[] = "tz.imageLoader/1";

    // Looks at the file and fills in the record. A failure, whatever its code, means that the loader does not
    // read the file, and leaves the record as it was: the host tries another loader. [host thread, or any
    // thread as above]
    virtual TzResult recognise(TzLoadAccess* access) noexcept = 0;

    // Delivers the image of a recognised file. Images keep what they need of the loader. [as recognise()]
    virtual TzResult load(const TzLoadAccess* access, ITzImage** out) noexcept = 0;

  protected:
    ~ITzImageLoader() = default;
};
