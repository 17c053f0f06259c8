#include "output/LogFile.h"

namespace calorivo {

FileProblem appendLine(FileHandle& file, std::string_view line) {
    if (FileProblem problem = file.seekToEndOfFile(); !problem.empty()) return problem;
    // In one piece, so that what is cut off can only be its end.
    std::string data = file.endsInsideLine() ? "\n" : "";
    data.append(line).append("\n");
    if (FileProblem problem = file.writeData(data); !problem.empty()) return problem;
    return file.synchronizeFile();
}

}  // namespace calorivo
