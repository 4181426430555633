// The workloads in this library, without the command line.
//
//     product repeat TEMPLATE OUT VARIABLES COUNT   a plain template, read and run each time
//     product lookup VARIABLES LOOKUPS COUNT
//     product archive VARIABLES COUNT               saves and loads a table of variables
//     product rtf BYTES COUNT                       RTFEncode and ScaleRTFText

#include <cstring>

#include "benchmarks/comparison/programs/Timing.h"
#include "platform/files/CArchive.h"
#include "platform/files/CFile.h"
#include "platform/files/CMemFile.h"
#include "platform/files/WholeFile.h"
#include "report/FileParser.h"
#include "report/RTFText.h"
#include "report/VarTable.h"

namespace {

void fill(VarTable& variables, const char* file) {
    for (const timing::Variable& variable : timing::readVariables(file)) {
        if (variable.type == "int") {
            variables.AddVar(variable.name.c_str(), std::atoi(variable.value.c_str()));
        } else if (variable.type == "double") {
            variables.AddVar(variable.name.c_str(), std::atof(variable.value.c_str()));
        } else {
            variables.AddVar(variable.name.c_str(), variable.value.c_str());
        }
    }
}

void parse(CFile& source, CFile& output, VarTable& variables) {
    FileParser parser(source, output, variables, 0);
    ParseException fault;
    if (!parser.Parse(&fault)) timing::fail(fault.what());
}

int repeat(char** arguments) {
    VarTable variables;
    fill(variables, arguments[2]);
    timing::report("ns", timing::median(std::atoi(arguments[3]), [&] {
                       CFile source(arguments[0], CFile::modeRead | CFile::shareDenyNone);
                       tessalink::WholeFile output(arguments[1]);
                       parse(source, output, variables);
                       output.Commit();
                   }));
    return 0;
}

std::string contents(CMemFile& file) {
    std::string text(static_cast<std::size_t>(file.GetLength()), '\0');
    file.SeekToBegin();
    file.Read(text.data(), static_cast<UINT>(text.size()));
    return text;
}

int lookup(char** arguments) {
    const int count = std::atoi(arguments[0]);
    const std::vector<std::string> names = timing::variableNames(count);
    std::string text;
    for (const std::uint32_t i : timing::lookupOrder(count, std::atoi(arguments[1]))) {
        text.append("@").append(names[i]).append(" ");
    }
    VarTable variables;
    timing::report("fill", timing::once([&] {
                       for (int i = 0; i < count; ++i) {
                           variables.AddVar(names[static_cast<std::size_t>(i)].c_str(), i);
                       }
                   }));
    std::string result;
    timing::report("run", timing::median(std::atoi(arguments[2]), [&] {
                       CMemFile source;
                       source.Attach(reinterpret_cast<BYTE*>(text.data()),
                                     static_cast<UINT>(text.size()));
                       CMemFile output(1 << 20);
                       parse(source, output, variables);
                       result = contents(output);
                   }));
    timing::report("checksum", timing::checksum(result));
    return 0;
}

int archive(char** arguments) {
    const int count = std::atoi(arguments[0]);
    VarTable variables;
    for (const std::string& name : timing::variableNames(count)) {
        // A third of each kind, as a host's table holds names, raw values and scores.
        switch (variables.GetCount() % 3) {
            case 0:
                variables.AddVar(name.c_str(), static_cast<int>(variables.GetCount()));
                break;
            case 1:
                variables.AddVar(name.c_str(), 0.5 * static_cast<double>(variables.GetCount()));
                break;
            default:
                variables.AddVar(name.c_str(), name.c_str());
        }
    }
    const int repeats = std::atoi(arguments[1]);
    CMemFile file(1 << 20);
    timing::report("VarTable save", timing::median(repeats, [&] {
                       file.SetLength(0);
                       file.SeekToBegin();
                       CArchive store(&file, CArchive::store);
                       variables.Serialize(store);
                       store.Close();
                   }));
    std::printf("bytes %lld\n", static_cast<long long>(file.GetLength()));
    timing::report("VarTable load", timing::median(repeats, [&] {
                       file.SeekToBegin();
                       CArchive load(&file, CArchive::load);
                       VarTable loaded;
                       loaded.Serialize(load);
                       load.Close();
                       if (loaded.GetCount() != variables.GetCount())
                           timing::fail("lost variables");
                   }));
    return 0;
}

int rtf(char** arguments) {
    const std::size_t size = std::strtoull(arguments[0], nullptr, 10);
    constexpr std::string_view cSample =
        "\\pard\\s0\\fs22\\li720\\fi-360 {\\b The client} scored above the average range on this "
        "scale, \\i as in the test before\\i0 , and describes a calm, careful way of "
        "working.\\par\n";
    std::string text;
    while (text.size() + cSample.size() <= size) text.append(cSample);
    text.resize(size, ' ');
    const CString sample{std::string_view(text)};

    const int repeats = std::atoi(arguments[1]);
    timing::report("RTFEncode", timing::median(repeats, [&] {
                       const CString encoded = RTFEncode(sample);
                       if (encoded.GetLength() <= sample.GetLength()) timing::fail("not encoded");
                   }));
    // Scaling changes its text in place: each run gets a copy, made outside the time.
    std::vector<double> times;
    for (int i = 0; i < repeats; ++i) {
        CString scaled = sample;
        times.push_back(timing::once([&] { ScaleRTFText(0.5, scaled); }));
    }
    std::sort(times.begin(), times.end());
    timing::report("ScaleRTFText", times[times.size() / 2]);
    return 0;
}

constexpr timing::Mode cModes[] = {
    {"repeat", 4, repeat}, {"lookup", 3, lookup}, {"archive", 2, archive}, {"rtf", 2, rtf}};

}  // namespace

int main(int argc, char** argv) {
    return timing::runMode(cModes, argc, argv);
}
