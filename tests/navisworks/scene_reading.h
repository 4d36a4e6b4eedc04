// A scene that was written, read back and told as text.
#pragma once

#include "readers/scene/reader.h"

#include <array>
#include <filesystem>
#include <string>
#include <vector>

class SceneReading {
public:
    using Point = std::array<double, 3>;

    // A finding of the reader fails the test.
    explicit SceneReading(const std::filesystem::path& path);

    // The node tree below the scene's own root, two blanks a level, in the code page:
    //   NAME* {key=value, key|internal=value|internal}      a group; the star marks a layer, braces a property
    //   attribute triangles 12 #FF0000                                 a shape: its kind, its number, its colour
    //   triangles 12 #FF0000 80% clear
    //   text "T" SimSun 2.5                                  behind the frame that is drawn for it
    //   grid NAME [Base 0], and its lines as NAME (x,y,z)-(x,y,z)
    std::string tree() const;
    // The lines of the tree that stand below the first group of this name, without their common indent.
    std::string below(const std::string& name) const;
    // Vertices of the first shape below the group of this name, in the model's millimetres.
    std::vector<Point> vertices(const std::string& name) const;
    // The sixteen numbers of the first text below the group of this name.
    std::vector<double> textTransform(const std::string& name) const;
    // User and internal class name of each property attribute.
    std::vector<std::string> classNames() const;
    const readers::scene::Scene& scene() const { return scene_; }

private:
    const readers::scene::Node& nodeAt(std::uint64_t index) const { return scene_.nodes.at(index); }
    void tell(std::uint64_t index, int depth, std::string& out) const;
    std::string shapeText(const readers::scene::Primitive& primitive) const;
    std::string materialText(std::uint64_t material) const;
    std::vector<Point> verticesOf(const readers::scene::Node& node) const;
    const readers::scene::Node* find(const std::string& name) const;
    const readers::scene::Node* firstShape(const readers::scene::Node& node) const;

    readers::scene::Scene scene_;
};
