#include "toolkit/gfx/ImageCache.h"

#include "toolkit/gfx/ImageConverter.h"
#include "toolkit/gfx/ImageIO.h"
#include "toolkit/support/MainThread.h"

#include <algorithm>
#include <cmath>
#include <condition_variable>
#include <deque>
#include <list>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

namespace CvImage {

LoadedImage::LoadedImage(LightweightString<wchar_t> path, Cv::Image::Surface surface)
    : m_path(std::move(path))
    , m_surface(std::move(surface))
{
}

namespace {

std::string keyFor(const LightweightString<wchar_t>& path, XY<int> atLeast)
{
    return toUTF8(path.view()).str() + '\n' + std::to_string(atLeast.x) + 'x' + std::to_string(atLeast.y);
}

struct Job {
    Cache::RequestId id = 0;
    LightweightString<wchar_t> path;
    XY<int> atLeast;
    std::string key;
};

struct Finished {
    Cache::RequestId id = 0;
    LightweightString<wchar_t> path;
    Cv::Image::Surface surface;
};

struct Kept {
    std::string key;
    Cv::Image::Surface surface;
};

} // namespace

struct Cache::State : std::enable_shared_from_this<Cache::State> {
    // Guards everything below except `callbacks` and `nextId`, which only the user-interface thread uses.
    mutable std::mutex mutex;
    std::condition_variable workAvailable;
    std::condition_variable idle;
    std::deque<Job> queue;
    std::vector<Finished> finished;
    std::list<Kept> recency; // most recently used first
    std::unordered_map<std::string, std::list<Kept>::iterator> kept;
    size_t bytes = 0;
    size_t limit = defaultMemoryLimit;
    int busy = 0;
    bool stopping = false;
    std::vector<std::thread> workers;

    std::unordered_map<RequestId, Callback> callbacks;
    RequestId nextId = 1;

    void evictLocked()
    {
        while (bytes > limit && !recency.empty()) {
            bytes -= recency.back().surface.byteSize();
            kept.erase(recency.back().key);
            recency.pop_back();
        }
    }

    void keepLocked(const std::string& key, const Cv::Image::Surface& surface)
    {
        if (surface.empty() || surface.byteSize() > limit || kept.count(key))
            return;
        recency.push_front({ key, surface });
        kept[key] = recency.begin();
        bytes += surface.byteSize();
        evictLocked();
    }

    Cv::Image::Surface findLocked(const std::string& key)
    {
        auto it = kept.find(key);
        if (it == kept.end())
            return {};
        recency.splice(recency.begin(), recency, it->second);
        return it->second->surface;
    }

    // Decodes one job (the lock is not held while decoding) and hands the result over.
    void run(Job job, std::unique_lock<std::mutex>& lock)
    {
        Cv::Image::Surface surface = findLocked(job.key);
        ++busy;
        if (surface.empty()) {
            lock.unlock();
            surface
                = Cv::Image::Surface(Pictor::loadImage(toUTF8(job.path.view()).str(), job.atLeast, maxPixelsPerImage));
            if (!surface.empty())
                surface = Cache::shrinkToCover(surface, job.atLeast);
            lock.lock();
            keepLocked(job.key, surface);
        }
        --busy;
        const bool firstFinished = finished.empty();
        finished.push_back({ job.id, std::move(job.path), std::move(surface) });
        if (firstFinished) {
            std::weak_ptr<State> weak = weak_from_this();
            defer([weak] {
                if (auto state = weak.lock())
                    state->deliver();
            });
        }
        if (queue.empty() && busy == 0)
            idle.notify_all();
    }

    void workerLoop()
    {
        std::unique_lock<std::mutex> lock(mutex);
        for (;;) {
            workAvailable.wait(lock, [this] { return stopping || !queue.empty(); });
            if (stopping)
                return;
            Job job = std::move(queue.back());
            queue.pop_back();
            run(std::move(job), lock);
        }
    }

    size_t deliver()
    {
        std::vector<Finished> done;
        {
            std::lock_guard<std::mutex> lock(mutex);
            done.swap(finished);
        }
        size_t delivered = 0;
        for (Finished& f : done) {
            auto it = callbacks.find(f.id);
            if (it == callbacks.end())
                continue; // cancelled
            Callback callback = std::move(it->second);
            callbacks.erase(it);
            ++delivered;
            callback(NotifyMsg(imageLoadedMsg, Cv::make<LoadedImage>(std::move(f.path), std::move(f.surface))));
        }
        return delivered;
    }

    void stopWorkers()
    {
        {
            std::lock_guard<std::mutex> lock(mutex);
            stopping = true;
        }
        workAvailable.notify_all();
        for (std::thread& t : workers)
            t.join();
        workers.clear();
        std::lock_guard<std::mutex> lock(mutex);
        stopping = false;
    }

    void startWorkers(int count)
    {
        for (int i = 0; i < count; ++i)
            workers.emplace_back([this] { workerLoop(); });
    }
};

Cache& Cache::instance()
{
    static Cache cache;
    return cache;
}

Cache::Cache(int workers, size_t memoryLimit)
    : m_state(std::make_shared<State>())
{
    m_state->limit = memoryLimit;
    m_state->startWorkers(std::max(0, workers));
}

Cache::~Cache()
{
    m_state->stopWorkers();
}

Cache::RequestId Cache::loadAsync(
    const LightweightString<wchar_t>& path, uint32_t format, XY<int> atLeast, Callback done)
{
    if (format != formatARGB)
        return 0;
    const RequestId id = m_state->nextId++;
    m_state->callbacks[id] = std::move(done);
    {
        std::lock_guard<std::mutex> lock(m_state->mutex);
        m_state->queue.push_back({ id, path, atLeast, keyFor(path, atLeast) });
    }
    m_state->workAvailable.notify_one();
    return id;
}

void Cache::cancel(RequestId request)
{
    if (m_state->callbacks.erase(request) == 0)
        return;
    std::lock_guard<std::mutex> lock(m_state->mutex);
    auto& queue = m_state->queue;
    queue.erase(
        std::remove_if(queue.begin(), queue.end(), [request](const Job& j) { return j.id == request; }), queue.end());
}

bool Cache::isCached(const LightweightString<wchar_t>& path, XY<int> atLeast) const
{
    std::lock_guard<std::mutex> lock(m_state->mutex);
    return m_state->kept.count(keyFor(path, atLeast)) > 0;
}

Cv::Image::Surface Cache::get(const LightweightString<wchar_t>& path, XY<int> atLeast)
{
    std::lock_guard<std::mutex> lock(m_state->mutex);
    return m_state->findLocked(keyFor(path, atLeast));
}

size_t Cache::deliverCompleted()
{
    return m_state->deliver();
}

void Cache::setMemoryLimit(size_t bytes)
{
    std::lock_guard<std::mutex> lock(m_state->mutex);
    m_state->limit = bytes;
    m_state->evictLocked();
}

size_t Cache::getMemoryLimit() const
{
    std::lock_guard<std::mutex> lock(m_state->mutex);
    return m_state->limit;
}

size_t Cache::memoryUsed() const
{
    std::lock_guard<std::mutex> lock(m_state->mutex);
    return m_state->bytes;
}

size_t Cache::numCached() const
{
    std::lock_guard<std::mutex> lock(m_state->mutex);
    return m_state->kept.size();
}

void Cache::clear()
{
    std::lock_guard<std::mutex> lock(m_state->mutex);
    m_state->kept.clear();
    m_state->recency.clear();
    m_state->bytes = 0;
}

void Cache::setWorkerCount(int workers)
{
    m_state->stopWorkers();
    m_state->startWorkers(std::max(0, workers));
}

int Cache::getWorkerCount() const
{
    return static_cast<int>(m_state->workers.size());
}

size_t Cache::numQueued() const
{
    std::lock_guard<std::mutex> lock(m_state->mutex);
    return m_state->queue.size();
}

size_t Cache::runPendingWork()
{
    std::unique_lock<std::mutex> lock(m_state->mutex);
    size_t ran = 0;
    while (!m_state->queue.empty()) {
        Job job = std::move(m_state->queue.back());
        m_state->queue.pop_back();
        m_state->run(std::move(job), lock);
        ++ran;
    }
    return ran;
}

void Cache::waitUntilIdle()
{
    if (m_state->workers.empty()) {
        runPendingWork();
        return;
    }
    std::unique_lock<std::mutex> lock(m_state->mutex);
    m_state->idle.wait(lock, [this] { return m_state->queue.empty() && m_state->busy == 0; });
}

Cv::Image::Surface Cache::decode(const void* data, size_t size, XY<int> atLeast)
{
    Cv::Image::Surface surface(Pictor::decodeImage(data, size, atLeast, maxPixelsPerImage));
    return surface.empty() ? surface : shrinkToCover(surface, atLeast);
}

Cv::Image::Surface Cache::shrinkToCover(const Cv::Image::Surface& surface, XY<int> atLeast)
{
    if (atLeast.x <= 0 && atLeast.y <= 0)
        return surface;
    const double scale = std::max(double(atLeast.x) / surface.width(), double(atLeast.y) / surface.height());
    if (scale >= 1.0)
        return surface;
    Cv::Image::Surface shrunk(std::max(1, static_cast<int>(std::ceil(surface.width() * scale - 1e-9))),
        std::max(1, static_cast<int>(std::ceil(surface.height() * scale - 1e-9))));
    if (!ImageConverter::resize(surface, shrunk))
        return surface;
    shrunk.setTransparencyType(surface.getTransparencyType());
    return shrunk;
}

} // namespace CvImage
