// Reading and writing JSON: parsing a ~5 MB document of mixed objects, arrays, strings and numbers from a
// file and from memory, the memory its tree takes, member lookup, and printing with the builder.
#include "toolkit/support/JSON.h"
#include "toolkit/support/TextFile.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <malloc.h>
#include <string>
#include <unistd.h>

namespace {

// One record of the generated document, as a tutorial or parameter file would hold it.
void addRecord(JSON::Builder& builder, int i)
{
    builder.startChild();
    builder.add("id", i);
    builder.add("name", "Clip " + std::to_string(i) + " \xE2\x80\x94 r\xC3\xA9sum\xC3\xA9 \"take\"");
    builder.add("category", i % 3 == 0 ? "Editing" : "Colour");
    builder.add("price", 12.34 * i);
    builder.add("scale", static_cast<float>(i) / 7.0f);
    builder.add("active", i % 2 == 0);
    builder.addNull("notes");
    builder.startArray("tags");
    for (const char* tag : {"alpha", "beta", "gamma"})
        builder.add({}, tag);
    builder.endArray();
    builder.startChild("size");
    builder.add("width", 1920);
    builder.add("height", 1080.5);
    builder.endChild();
    builder.startArray("points");
    for (int k = 0; k < 4; ++k)
        builder.add({}, i * 0.25 + k);
    builder.endArray();
    builder.endChild();
}

JSON::Builder makeDocument(size_t targetBytes)
{
    JSON::Builder builder;
    builder.add("title", "generated");
    builder.startArray("records");
    // About 400 bytes per record when printed with an indent of 2.
    const int records = static_cast<int>(targetBytes / 400);
    for (int i = 0; i < records; ++i)
        addRecord(builder, i);
    builder.endArray();
    return builder;
}

const std::string& documentText()
{
    static const std::string text = makeDocument(5u << 20).toString(2, 0);
    return text;
}

// The document as a file, written once and removed at exit.
class DocumentFile {
public:
    DocumentFile()
        : m_path(std::filesystem::temp_directory_path() / ("tessel-json-bench-" + std::to_string(::getpid()) + ".json"))
    {
        TextFile file;
        file.appendLine(documentText());
        file.save(fromUTF8(m_path.string()), TextFile::eEOLLF);
    }
    ~DocumentFile()
    {
        std::error_code error;
        std::filesystem::remove(m_path, error);
    }
    LightweightString<wchar_t> path() const { return fromUTF8(m_path.string()); }
    size_t size() const { return static_cast<size_t>(std::filesystem::file_size(m_path)); }

private:
    std::filesystem::path m_path;
};

void BM_JsonParseFile(benchmark::State& state)
{
    static const DocumentFile file;
    const auto path = file.path();
    for (auto _ : state) {
        auto root = JSON::parseFile(path);
        if (!root)
            state.SkipWithError("document did not parse");
        benchmark::DoNotOptimize(root.get());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * file.size()));
}
BENCHMARK(BM_JsonParseFile)->Unit(benchmark::kMillisecond);

void BM_JsonParseMemory(benchmark::State& state)
{
    const std::string& text = documentText();
    for (auto _ : state) {
        auto root = JSON::parse(text);
        benchmark::DoNotOptimize(root.get());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_JsonParseMemory)->Unit(benchmark::kMillisecond);

// What the tree costs to hold, against the size of its text (heap in use before and after parsing).
void BM_JsonTreeMemory(benchmark::State& state)
{
    const std::string& text = documentText();
    double treeBytes = 0;
    for (auto _ : state) {
        const size_t before = mallinfo2().uordblks;
        auto root = JSON::parse(text);
        treeBytes = static_cast<double>(mallinfo2().uordblks - before);
        benchmark::DoNotOptimize(root.get());
    }
    state.counters["tree_per_text_byte"] = treeBytes / static_cast<double>(text.size());
    state.counters["tree_MB"] = treeBytes / (1 << 20);
}
BENCHMARK(BM_JsonTreeMemory)->Unit(benchmark::kMillisecond)->Iterations(3);

// Lookup by name in a record-sized object, as readers of parameter and tutorial files do for every key.
void BM_JsonMemberLookup(benchmark::State& state)
{
    JSON::Builder builder;
    addRecord(builder, 7);
    const auto record = JSON::parse(builder.toString())->getChild(0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(record->getString("category"));
        benchmark::DoNotOptimize(record->getDouble("price", 0.0));
        benchmark::DoNotOptimize(record->getBool("active", false));
        benchmark::DoNotOptimize(record->getChild("size").get());
    }
}
BENCHMARK(BM_JsonMemberLookup);

void BM_JsonBuilderPrint(benchmark::State& state)
{
    const JSON::Builder builder = makeDocument(1u << 20);
    size_t bytes = 0;
    for (auto _ : state) {
        const std::string text = builder.toString(3, 0);
        bytes = text.size();
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
}
BENCHMARK(BM_JsonBuilderPrint)->Unit(benchmark::kMillisecond);

} // namespace
