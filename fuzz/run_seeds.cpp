// Runs a fuzz entry over the files of the folder that is named, and over every shorter form of each.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv)
{
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(argc == 2 ? argv[1] : ".")) {
        std::ifstream stream(entry.path(), std::ios::binary);
        const std::vector<char> content{std::istreambuf_iterator<char>(stream), {}};
        const std::vector<std::uint8_t> bytes(content.begin(), content.end());
        for (std::size_t size = bytes.size();; --size) {
            LLVMFuzzerTestOneInput(bytes.data(), size);
            if (size == 0)
                break;
        }
        ++files;
    }
    std::printf("%d seed files\n", files);
    return files == 0 ? 1 : 0;
}
