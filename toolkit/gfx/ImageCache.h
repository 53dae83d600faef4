#pragma once
// CvImage::Cache: pictures decoded in the background for lists of thumbnails.
//
// loadAsync queues a file; worker threads decode it (a JPEG straight at the smallest of its cheap reduced
// scales that still covers the size asked for, PNG and WebP at full size) and shrink the result, by area
// averaging, to the smallest size that covers the request, so what is kept and handed back is small. The
// result is kept in the cache and the request's callback runs on the user-interface thread, at the next
// drain of deferred calls (a turn of the event loop), with a NotifyMsg whose object is a LoadedImage. A file
// that is missing, empty, truncated, corrupt, or claims more than maxPixelsPerImage pixels gives an empty
// surface: the callback still runs, and nothing is kept.
//
// Requests are served newest first: the lines a person has just scrolled to are the ones they look at.
//
// Memory: what the cache keeps is bounded by setMemoryLimit; the least recently used pictures go first.
// What one decode may allocate is bounded by maxPixelsPerImage, times the number of workers.
//
// Determinism for tests and benchmarks: with setWorkerCount(0) nothing runs until runPendingWork(), which
// decodes on the calling thread; waitUntilIdle() waits for the workers (or runs the work itself when there
// are none). Either way the callbacks run only when the user-interface thread drains its deferred calls (or
// calls deliverCompleted()).

#include "toolkit/gfx/Surface.h"
#include "toolkit/support/LightweightString.h"
#include "toolkit/support/Notifier.h"
#include "toolkit/support/RefCount.h"
#include "toolkit/support/XY.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace CvImage {

// The object of the NotifyMsg a load's callback receives.
class LoadedImage : public iObject {
public:
    LoadedImage(LightweightString<wchar_t> path, Cv::Image::Surface surface);
    const LightweightString<wchar_t>& getPath() const { return m_path; }
    // Empty when the file could not be read as a picture.
    const Cv::Image::Surface& getSurface() const { return m_surface; }

private:
    LightweightString<wchar_t> m_path;
    Cv::Image::Surface m_surface;
};

class Cache {
public:
    using RequestId = uint64_t; // 0 is no request
    using Callback = std::function<void(const NotifyMsg&)>;

    static constexpr uint32_t formatARGB = Cv::Image::Surface::formatARGB;
    static constexpr int64_t maxPixelsPerImage = int64_t(1) << 25;
    static constexpr size_t defaultMemoryLimit = size_t(128) << 20;
    static constexpr int defaultWorkers = 2;
    static constexpr const char* imageLoadedMsg = "image_loaded";

    // The process-wide cache, made on first use.
    static Cache& instance();
    // A cache of one's own (benchmarks compare worker counts this way).
    explicit Cache(int workers = defaultWorkers, size_t memoryLimit = defaultMemoryLimit);
    ~Cache();
    Cache(const Cache&) = delete;
    Cache& operator=(const Cache&) = delete;

    // ---- Loading (user-interface thread)
    // Queues the file; `atLeast` is the size the picture will be shown at (0 in both: full size). Only the
    // four-byte ARGB format is offered; another format code answers 0 and queues nothing.
    RequestId loadAsync(const LightweightString<wchar_t>& path, uint32_t format, XY<int> atLeast, Callback done);
    // The callback will not run. Unknown or finished requests are ignored.
    void cancel(RequestId request);
    bool isCached(const LightweightString<wchar_t>& path, XY<int> atLeast = {}) const;
    // The kept picture (now the most recently used), or an empty surface.
    Cv::Image::Surface get(const LightweightString<wchar_t>& path, XY<int> atLeast = {});
    // Runs the callbacks of finished requests; answers how many ran. Deferred calls do this by themselves.
    size_t deliverCompleted();

    // ---- Memory
    void setMemoryLimit(size_t bytes);
    size_t getMemoryLimit() const;
    size_t memoryUsed() const;
    size_t numCached() const;
    void clear();

    // ---- Work
    // 0 workers: requests wait for runPendingWork(). Changing the count waits for decodes in progress.
    void setWorkerCount(int workers);
    int getWorkerCount() const;
    size_t numQueued() const;
    // Decodes every queued request on the calling thread; answers how many.
    size_t runPendingWork();
    // Returns when nothing is queued or being decoded.
    void waitUntilIdle();

    // What a worker does with a file's bytes: decode (bounded by maxPixelsPerImage) and shrink to the
    // smallest size covering `atLeast`. Any bytes at all may be given.
    static Cv::Image::Surface decode(const void* data, size_t size, XY<int> atLeast);

private:
    struct State;
    // The picture shrunk (area averaged) to the smallest size that covers `atLeast`: what is kept is small,
    // and the user-interface thread has almost nothing left to scale.
    static Cv::Image::Surface shrinkToCover(const Cv::Image::Surface& surface, XY<int> atLeast);

    std::shared_ptr<State> m_state;
};

} // namespace CvImage
