// The plain types that cross the boundary between a host and its modules: result codes, tag IDs, text,
// text sinks, points and boxes. Everything here has a fixed size and layout and is the same for every
// compiler on the platform; nothing owns anything.
#pragma once

#include <cstdint>
#include <type_traits>

// ---- Result codes -------------------------------------------------------------------------------

// A result: 0 is success, any value with the top bit set is a failure. Values below the top bit other than
// 0 are not used yet; a caller treats them as success.
using TzResult = uint32_t;

constexpr TzResult kTzOk = 0;
constexpr TzResult kTzFailed = 0x80000000U;       // the operation failed; nothing more is known
constexpr TzResult kTzOutOfMemory = 0x80000001U;  // memory ran out
constexpr TzResult kTzInvalidArgument =
    0x80000002U;  // a null pointer, text not UTF-8, a number not finite, no tag ID
constexpr TzResult kTzNoInterface = 0x80000003U;  // the object or host does not have the interface asked for
constexpr TzResult kTzNotFound = 0x80000004U;     // no such tag, channel, server, type or file
constexpr TzResult kTzNotRecognised = 0x80000005U;    // a loader does not read this file
constexpr TzResult kTzCancelled = 0x80000006U;        // the user cancelled
constexpr TzResult kTzVersionMismatch = 0x80000007U;  // host and module were built for SDKs that do not meet
constexpr TzResult kTzNotSupported = 0x80000008U;     // the operation exists but not on this object
constexpr TzResult kTzWrongThread = 0x80000009U;      // a [host thread] operation called from another thread
constexpr TzResult kTzExists = 0x8000000AU;           // something of that name is there already
constexpr TzResult kTzNotReady = 0x8000000BU;         // called out of order
constexpr TzResult kTzOutOfBounds = 0x80000015U;      // an index or coordinate beyond the end

constexpr bool tzFailed(TzResult result) {
    return (result & 0x80000000U) != 0;
}

// A few words on a code, for messages: "out of memory". Never null; static storage. [any thread]
constexpr const char* tzResultText(TzResult result) {
    switch (result) {
        case kTzOk:
            return "done";
        case kTzFailed:
            return "failed";
        case kTzOutOfMemory:
            return "out of memory";
        case kTzInvalidArgument:
            return "invalid argument";
        case kTzNoInterface:
            return "no such interface";
        case kTzNotFound:
            return "not found";
        case kTzNotRecognised:
            return "not recognised";
        case kTzCancelled:
            return "cancelled";
        case kTzVersionMismatch:
            return "SDK versions do not match";
        case kTzNotSupported:
            return "not supported";
        case kTzWrongThread:
            return "called on the wrong thread";
        case kTzExists:
            return "exists already";
        case kTzNotReady:
            return "called out of order";
        case kTzOutOfBounds:
            return "out of bounds";
        default:
            return tzFailed(result) ? "failed" : "done";
    }
}

// ---- Versions -----------------------------------------------------------------------------------

// The SDK's version: major in the upper 16 bits, minor in the lower. A minor step only adds interfaces; a
// major step may change what exists.
constexpr uint32_t kTzSdkVersion = 0x00010000U;

// Whether a host and a module built with these two SDK versions may talk: the same major version. Both
// sides apply this one rule, and neither calls an interface of the other before it holds. [any thread]
constexpr bool tzSdkCompatible(uint32_t hostVersion, uint32_t moduleVersion) {
    return (hostVersion >> 16) == (moduleVersion >> 16);
}

// ---- Tag IDs ------------------------------------------------------------------------------------

// Four ASCII characters packed into 32 bits, the first in the most significant byte: "LWID" is 0x4C574944.
// Names string tags of items and polygons, and polygon types.
using TzTagId = uint32_t;

constexpr TzTagId tzTag(const char (&name)[5]) {
    return (static_cast<uint32_t>(static_cast<unsigned char>(name[0])) << 24) |
           (static_cast<uint32_t>(static_cast<unsigned char>(name[1])) << 16) |
           (static_cast<uint32_t>(static_cast<unsigned char>(name[2])) << 8) |
           static_cast<uint32_t>(static_cast<unsigned char>(name[3]));
}

// Polygon types every host knows.
constexpr TzTagId kTzPolygonBezier = tzTag("BEZR");  // cubic Bezier: anchor, control, control, anchor, ...
constexpr TzTagId kTzPolygonLine = tzTag("LINE");    // straight edges from vertex to vertex

// Item types every host knows.
constexpr char kTzItemMesh[] = "mesh";

// ---- Text ---------------------------------------------------------------------------------------

// Text on its way in: UTF-8, `size` bytes, no terminator needed. Borrowed for the length of the call.
// `data` may be null when `size` is 0.
struct TzText {
    const char* data;
    uint64_t size;
};
static_assert(sizeof(TzText) == 16 && std::is_trivial_v<TzText> && std::is_standard_layout_v<TzText>);

// Text on its way out: the callee calls `write` once with the whole UTF-8 text; the bytes are borrowed for
// the length of that call, which must not call back into the object that writes. `write` returns a result
// code; a failure ends the operation with that code.
struct TzTextSink {
    void* context;
    TzResult (*write)(void* context, TzText text) noexcept;
};
static_assert(sizeof(TzTextSink) == 16 && std::is_standard_layout_v<TzTextSink>);

// ---- Geometry -----------------------------------------------------------------------------------

// A position in an item's own space, in scene units.
struct TzPoint {
    double x, y, z;
};
static_assert(sizeof(TzPoint) == 24 && std::is_trivial_v<TzPoint>);

// An axis-aligned box: lower corner, upper corner, extent (upper minus lower).
struct TzBox {
    TzPoint lower;
    TzPoint upper;
    TzPoint extent;
};
static_assert(sizeof(TzBox) == 72 && std::is_trivial_v<TzBox>);
