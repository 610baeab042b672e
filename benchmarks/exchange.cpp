/* What an exchange of terms costs: 20 languages with 10,000 and with 30,000 terms each.

   Each figure is a ratio of two times that were taken one after the other in one process, in turns, and the median of several
   such pairs is printed with the lowest and the highest, because a shared machine is slower from one second to the next. Two
   things are compared with: Node, which reads and parses, or prints and writes, the same files with JSON.parse and
   JSON.stringify(value, null, 2) and does nothing else; and the bare parser and the bare writer of the JSON library, in memory,
   one document after the other. Ours is the whole call, with the disk.

   Memory is the peak of resident memory above what the process held before the call, in a process of its own, divided by the size
   of the texts: the bytes of the files that are exchanged. */

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <Corrade/Containers/Array.h>
#include <Corrade/Containers/GrowableArray.h>
#include <Corrade/Containers/StringView.h>
#include <Corrade/Utility/Debug.h>
#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "Callgrind.h"
#include "ExchangeData.h"
#include "Figures.h"
#include "NodeProcess.h"
#include "QuorvaneEditor/AllLanguages.h"
#include "QuorvaneEditor/LocalizationTools.h"
#include "document/EditorSession.h"
#include "localization/LanguageLookup.h"

namespace {

using namespace QuorvaneEngine;

constexpr int InstructionTerms = 1000;

Containers::StringView viewed(const std::string& text) { return {text.data(), text.size()}; }

/* A folder on the disk that goes with the object. */
class Folder {
public:
    Folder(): _path{(std::filesystem::temp_directory_path() / "quorvane-exchange-XXXXXX").string()} {
        if(!mkdtemp(_path.data())) std::abort();
    }
    ~Folder() {
        std::error_code error;
        std::filesystem::remove_all(_path, error);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string operator/(const std::string& name) const { return _path + '/' + name; }

    /* What somebody wrote before must not be waited for by who synchronizes next. */
    void settle() const {
        const int folder = open(_path.c_str(), O_RDONLY | O_DIRECTORY);
        if(folder >= 0) syncfs(folder);
        close(folder);
    }

private:
    std::string _path;
};

std::string contentOf(const std::string& path) {
    std::ifstream file{path, std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, {}};
}

/* Contents of the JSON files in a folder, but for hidden folders, in the order of their paths. */
std::vector<std::string> textsOf(const std::string& folder) {
    std::vector<std::string> paths;
    for(auto at = std::filesystem::recursive_directory_iterator{folder}; at != end(at); ++at) {
        if(at->is_directory() && at->path().filename().string()[0] == '.') at.disable_recursion_pending();
        else if(at->path().extension() == ".json") paths.push_back(at->path().string());
    }
    std::sort(paths.begin(), paths.end());
    std::vector<std::string> texts;
    texts.reserve(paths.size());
    for(const std::string& path: paths) texts.push_back(contentOf(path));
    return texts;
}

std::size_t sizeOf(const std::vector<std::string>& texts) {
    std::size_t size = 0;
    for(const std::string& text: texts) size += text.size();
    return size;
}

/* --- Bare library ------------------------------------------------------------------------------------------------ */

double secondsOfBareParse(const std::vector<std::string>& texts) {
    std::vector<rapidjson::Document> documents(texts.size());
    return secondsOf([&] {
        for(std::size_t i = 0; i != texts.size(); ++i) documents[i].Parse(texts[i].data(), texts[i].size());
    });
}

double secondsOfBareWriter(const std::vector<rapidjson::Document>& documents) {
    std::vector<std::unique_ptr<rapidjson::StringBuffer>> buffers(documents.size());
    return secondsOf([&] {
        for(std::size_t i = 0; i != documents.size(); ++i) {
            buffers[i] = std::make_unique<rapidjson::StringBuffer>();
            rapidjson::PrettyWriter writer{*buffers[i]};
            writer.SetIndent(' ', 2);
            documents[i].Accept(writer);
        }
    });
}

std::vector<rapidjson::Document> documentsOf(const std::vector<std::string>& texts) {
    std::vector<rapidjson::Document> documents(texts.size());
    for(std::size_t i = 0; i != texts.size(); ++i) documents[i].Parse(texts[i].data(), texts[i].size());
    return documents;
}

/* --- Ours -------------------------------------------------------------------------------------------------------- */

/* A project at work. The calls are those of a view. */
struct Project {
    EditorSession session;

    void import(const std::string& path) {
        Containers::Array<UnsignedInt> languages;
        LocalizationTools::importTerms(
            session.editor(), languages, FallbackLanguage, viewed(path), LocalizationFormat::I18Next);
    }

    Containers::Array<UnsignedInt> languages() {
        Containers::Array<UnsignedInt> indices;
        for(const auto& member: std::as_const(session.project().document())["languages"].GetObject())
            Containers::arrayAppend(indices, UnsignedInt(findLanguage(member.name.GetString())));
        return indices;
    }

    void exportTo(const std::string& folder) {
        LocalizationTools::exportTerms(
            session.editor(), languages(), FallbackLanguage, viewed(folder), LocalizationFormat::I18Next);
    }

    void exportCompressedTo(const std::string& path) {
        LocalizationTools::exportTermsCompressed(
            session.editor(), languages(), FallbackLanguage, viewed(path), LocalizationFormat::I18Next);
    }

    std::size_t changeCount() { return session.changes().changes().size(); }

    rapidjson::SizeType termCount() {
        const rapidjson::Value* const terms = session.project().getValue("/localization/terms", false);
        return terms ? terms->MemberCount() : 0;
    }
};

/* --- Processes of their own -------------------------------------------------------------------------------------- */

/* In kB, of this process. */
long memory(const char* const what) {
    std::ifstream status{"/proc/self/status"};
    for(std::string line; std::getline(status, line);)
        if(line.compare(0, std::strlen(what), what) == 0) return std::atol(line.c_str() + std::strlen(what));
    return 0;
}

std::string outputOf(const std::string& command) {
    std::FILE* const pipe = popen(command.c_str(), "r");
    std::string output;
    char buffer[256];
    while(pipe && std::fgets(buffer, sizeof(buffer), pipe)) output += buffer;
    if(pipe) pclose(pipe);
    return output;
}

/* Peak memory of an exchange in a process of its own, in bytes.
   @param project   folder of the project, empty for a new one */
double peakOf(const std::string& program, const char* const what, const std::string& project, const std::string& path) {
    const std::string command = "'" + program + "' --memory " + what + " '" + project + "' '" + path + "'";
    return std::atof(outputOf(command).c_str());
}

int measureMemory(const char* const what, const std::string& folder, const std::string& path) {
    Project project;
    if(!folder.empty() && !project.session.open(viewed(folder))) return 1;
    malloc_trim(0);
    // The peak of before is forgotten where the system lets it be.
    std::ofstream{"/proc/self/clear_refs"} << "5";
    const long before = memory("VmRSS:");
    if(std::strcmp(what, "export") == 0) project.exportTo(path);
    else project.import(path);
    std::printf("%ld\n", (memory("VmHWM:") - before) * 1024);
    return project.termCount() ? 0 : 1;
}

int countInstructions(const char* const what, const std::string& path) {
    Project project;
    const std::vector<std::string> texts = textsOf(path);
    const std::vector<rapidjson::Document> documents = documentsOf(texts);
    if(std::strcmp(what, "export") == 0) project.import(path);
    CALLGRIND_START_INSTRUMENTATION;
    if(std::strcmp(what, "import") == 0) project.import(path);
    else if(std::strcmp(what, "export") == 0) project.exportTo(path + "-out");
    else if(std::strcmp(what, "parse") == 0) secondsOfBareParse(texts);
    else secondsOfBareWriter(documents);
    CALLGRIND_STOP_INSTRUMENTATION;
    return 0;
}

/* --- All of it --------------------------------------------------------------------------------------------------- */

class Exchange {
public:
    Exchange(const std::string& program, const int terms, NodeProcess& node)
        : _program{program}, _terms{terms}, _node{node} {
        ExchangeData::write(ExchangeData::make(terms, 0), _folder / "first");
        ExchangeData::write(ExchangeData::make(terms, 1), _folder / "second");
        _texts = textsOf(_folder / "first");
        _documents = documentsOf(_texts);

        Project project;
        std::filesystem::create_directories(_folder / "project");
        std::ofstream{_folder / "project/project.json"} << "{}\n";
        _isGood = project.session.open(viewed(_folder / "project"));
        project.import(_folder / "first");
        project.exportCompressedTo(_folder / "first.zip");
        _isGood &= project.session.save() && int(project.termCount()) == terms;
        _projectTexts = textsOf(_folder / "project");
        _projectDocuments = documentsOf(_projectTexts);
    }

    bool run(const int rounds) {
        std::printf("20 languages, %d terms each: %.1f MB in files\n", _terms, double(sizeOf(_texts)) / 1e6);
        for(int i = 0; i != rounds; ++i) {
            round();
            _measures.turn();
        }
        bool isMet = _measures.printAll();
        isMet &= peak("peak memory, import", "import", "", _folder / "first");
        isMet &= peak("peak memory, import, all changed", "import", _folder / "project", _folder / "second");
        isMet &= peak("peak memory, export", "export", _folder / "project", _folder / "peak");
        return (isMet & _isGood) || (!_isGood && fail("what was exchanged is not what it should be"));
    }

private:
    Base nodeParse(const double target, const char* const folder) {
        return {"Node", target, [this, folder] { return _node.run({"parse", _folder / folder}); }};
    }
    Base nodeWriter(const double target) {
        return {"Node", target, [this] {
                    std::filesystem::remove_all(_folder / "node");
                    _folder.settle();
                    const double seconds = _node.run({"stringify", _folder / "first", _folder / "node"});
                    _folder.settle();
                    return seconds;
                }};
    }
    Base bareParse(const double target) {
        return {"bare parse", target, [this] { return secondsOfBareParse(_texts); }};
    }
    Base bareWriter(const double target) {
        return {"bare writer", target, [this] { return secondsOfBareWriter(_documents); }};
    }

    void round() {
        const std::string first = _folder / "first", out = _folder / "out", archive = _folder / "out.zip";
        {
            Project project;
            _measures.take("import, folder", {nodeParse(1.0, "first"), bareParse(4.0)}, [&] { project.import(first); });
            check(int(project.termCount()) == _terms);

            std::filesystem::remove_all(out);
            _folder.settle();
            _measures.take("export, folder", {nodeWriter(1.0), bareWriter(2.5)}, [&] { project.exportTo(out); });
            _folder.settle();
            _measures.take(
                "export, folder, unchanged", {nodeWriter(NoTarget), bareWriter(2.5)}, [&] { project.exportTo(out); });
            check(textsOf(out) == _texts);

            _folder.settle();
            const Base pack{"Node", NoTarget, [&] { return _node.run({"pack", first, _folder / "node.packed"}); }};
            std::filesystem::remove(archive);
            _measures.take("export, ZIP", {pack}, [&] { project.exportCompressedTo(archive); });

            const std::size_t changes = project.changeCount();
            _measures.take(
                "import, nothing changed", {nodeParse(1.0, "first"), bareParse(4.0)}, [&] { project.import(first); });
            check(project.changeCount() == changes);
            _measures.take("import, all changed", {nodeParse(1.0, "second"), bareParse(4.0)},
                [&] { project.import(_folder / "second"); });
            check(project.changeCount() > changes);
            _measures.take("undo of the import, all changed", {bareParse(NoTarget)}, [&] { project.session.undo(); });
            _measures.take("undo of the import", {bareParse(NoTarget)}, [&] { project.session.undo(); });
            check(project.termCount() == 0);
        }
        {
            Project project;
            const Base unpack{"Node", 1.0, [&] { return _node.run({"unpack", first, _folder / "node.packed"}); }};
            _measures.take("import, ZIP", {unpack, bareParse(NoTarget)}, [&] { project.import(archive); });
            check(int(project.termCount()) == _terms);
        }
        project();
    }

    void project() {
        const std::string folder = _folder / "project";
        const Base parse{"bare parse of its files", 4.0, [this] { return secondsOfBareParse(_projectTexts); }};
        const Base writer{"bare writer of its files", 2.5, [this] { return secondsOfBareWriter(_projectDocuments); }};
        Project project;
        _measures.take(
            "opening", {nodeParse(1.0, "project"), parse}, [&] { _isGood &= project.session.open(viewed(folder)); });
        const std::string edit = "edit " + std::to_string(++_edits);
        project.session.changes().pushChange(
            "/localization/translations/de/menus.amberAmber.amberAmber.label/note", viewed(edit), false);
        _folder.settle();
        _measures.take("saving after one edit", {writer}, [&] { _isGood &= project.session.save(); });
    }

    bool peak(const std::string& name, const char* const what, const std::string& project, const std::string& path) {
        const double bytes = peakOf(_program, what, project, path);
        return print(name + " / texts", std::vector{bytes / double(sizeOf(_texts))}, 4.0);
    }

    void check(const bool isGood) { _isGood &= isGood; }

    Folder _folder;
    std::string _program;
    int _terms;
    NodeProcess& _node;
    Measures _measures;
    bool _isGood = false;
    int _edits = 0;
    std::vector<std::string> _texts, _projectTexts;
    std::vector<rapidjson::Document> _documents, _projectDocuments;
};

bool printInstructions() {
    const Folder folder;
    ExchangeData::write(ExchangeData::make(InstructionTerms, 0), folder / "first");
    const auto count = [&](const std::string& what) { return instructionsOf(what + " '" + (folder / "first") + "'"); };
    const double parse = count("parse"), import = count("import"), writer = count("writer"), exported = count("export");
    if(parse == 0.0 || writer == 0.0) {
        std::printf("instructions are not counted: there is no working valgrind\n");
        return true;
    }
    std::printf("20 languages, %d terms each: instructions\n", InstructionTerms);
    print("import, folder / bare parse", std::vector{import / parse}, NoTarget);
    print("export, folder / bare writer", std::vector{exported / writer}, NoTarget);
    return true;
}

}

int main(const int argc, char** const argv) {
    // What the tools report is not what is looked at here.
    Corrade::Utility::Debug quiet{nullptr};
    Corrade::Utility::Warning silent{nullptr};
    if(argc == 5 && !std::strcmp(argv[1], "--memory")) return measureMemory(argv[2], argv[3], argv[4]);
    if(argc == 4 && !std::strcmp(argv[1], "--instructions")) return countInstructions(argv[2], argv[3]);

    const std::string program = std::filesystem::canonical("/proc/self/exe");
    NodeProcess node{QUORVANE_SOURCE_DIR "/benchmarks/exchange.mjs"};
    if(!node.isRunning()) std::printf("nothing is compared with Node, which cannot be started\n");
    std::printf("%-48s %8s %8s %8s %8s\n", "", "median", "lowest", "highest", "target");
    if(argc == 3) return Exchange{program, std::atoi(argv[1]), node}.run(std::atoi(argv[2])) ? 0 : 1;
    bool isMet = Exchange{program, 10000, node}.run(9);
    isMet &= Exchange{program, 30000, node}.run(5);
    printInstructions();
    return isMet ? 0 : 1;
}
