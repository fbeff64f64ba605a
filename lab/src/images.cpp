#include "images.h"

#include <filesystem>
#include <system_error>

namespace lab {

namespace {

std::string base_name(const std::string& path)
{
    return path.substr(path.find_last_of("/\\") + 1);
}

const Image* declared_image(const Scenario& scenario, const std::string& argument)
{
    for (const Image& image : scenario.images)
        if (image.file == argument || image.file == base_name(argument))
            return &image;
    return nullptr;
}

}  // namespace

ImageLookup find_image(const Scenario& scenario, const std::string& cwd,
                       const std::string& argument)
{
    namespace fs = std::filesystem;
    ImageLookup lookup;
    fs::path path(argument);
    if (path.is_relative())
        path = fs::path(cwd) / path;
    const Image* image = declared_image(scenario, argument);
    std::error_code error;
    bool present = fs::is_regular_file(path, error) && !(image && image->missing);
    if (!present) {
        lookup.problem = "Image file " + argument + " not found";
        return lookup;
    }
    if (!image) {
        lookup.problem = "Image file " + argument + " is not a valid firmware image";
        return lookup;
    }
    lookup.image = image;
    lookup.size = fs::file_size(path, error);
    return lookup;
}

}  // namespace lab
