#pragma once

#include <fstream>
#include <istream>
#include <string>

namespace AssetConnector {

/// The file that a command reads.
class Input
{
public:
    /// \param file "-": standard input.
    /// \throws std::runtime_error when it cannot be opened.
    explicit Input(const std::string& file);

    std::istream& Stream() { return *mStream; }

    /// How messages call it.
    const std::string& Name() const { return mName; }

    /// \return The whole content, without a leading byte order mark. \throws std::runtime_error
    std::string ReadAll();

    /// \throws std::runtime_error when reading failed somewhere.
    void RequireGood() const;

private:
    std::string mName;
    std::ifstream mFile;
    std::istream* mStream;
};

/// Prints one line on standard error; line feeds and other control characters in it become spaces.
void Complain(const std::string& message);

}  // namespace AssetConnector
