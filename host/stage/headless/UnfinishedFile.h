#pragma once

#include <string>

namespace headless {

/// A file that another program writes and that gets its name only when it is whole. Until then it lies
/// beside, under a name of its own with the same ending; it goes with this object unless it was published.
class UnfinishedFile {
public:
    /// Throws OutputError if none can be made, or if something else than a file stands under the name.
    explicit UnfinishedFile(const std::string& wantedPath);
    ~UnfinishedFile();
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

    /// Where to write.
    const std::string& Path() const { return path; }
    /// Gives it the wanted name in place of a file that has it. Throws OutputError.
    void Publish();

private:
    bool TryName(const std::string& name);

    std::string wanted;
    std::string path; ///< empty once published
};

} // namespace headless
