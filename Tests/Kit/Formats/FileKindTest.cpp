#include <QuarnKit/Formats/Kind/FileKind.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>

#include <QuarnKit/Formats/Stl/StlLayout.h>
#include "Support/Rng.h"

namespace quarn::test {
namespace {

using namespace std::string_literals;

// "xml", "obj" or "stl" for a screen, and the name of any other kind.
std::string kindOf(const std::string& bytes, const std::string& path, FileExtent extent = FileExtent::Whole) {
    const FileKind kind = fileKindOf(bytes, bytes, extent, path);
    if (const auto* foreign = std::get_if<ForeignKind>(&kind)) return std::string(foreign->name);
    switch (std::get<ScreenFormat>(kind)) {
        case ScreenFormat::Xml:
            return "xml";
        case ScreenFormat::Obj:
            return "obj";
        default:
            return "stl";
    }
}

template <class NumberAt>
std::string binaryStl(std::int32_t declaredCount, int records, NumberAt numberAt, std::string header = "") {
    header.resize(StlLayout::kHeaderSize, '\0');
    header.append(reinterpret_cast<const char*>(&declaredCount), sizeof declaredCount);
    for (int record = 0; record < records; ++record) {
        for (int i = 0; i < 12; ++i) {
            const float number = numberAt(record * 12 + i);
            header.append(reinterpret_cast<const char*>(&number), sizeof number);
        }
        header.append(2, '\0');
    }
    return header;
}

std::string goodStl(std::int32_t declaredCount, int records, const std::string& header = "") {
    return binaryStl(
        declaredCount, records, [](int i) { return static_cast<float>(i % 7) * 0.4F - 1.0F; }, header);
}

TEST(FileKind, ScreensAreKnownByTheirContents) {
    for (const char* path : {"a.obj", "a.stl", "a.xml", "a.dat", "a"}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(kindOf(" <ScreenGeometry/>", path), "xml");
        EXPECT_EQ(kindOf("<?xml version='1.0'?><!-- <html> --><Room/>", path), "xml");
        EXPECT_EQ(kindOf("# a comment\n\n  v 0 0 0\n", path), "obj");
        EXPECT_EQ(kindOf("made by a program\nv\t0 0 0\n", path), "obj");
        EXPECT_EQ(kindOf("# only a comment\n", path), "obj");
        EXPECT_EQ(kindOf("v 0 0 0\nf 1\0 2 3\n"s, path), "obj");
        EXPECT_EQ(kindOf(" SOLID wall\nfacet", path), "stl");
        EXPECT_EQ(kindOf(goodStl(2, 2), path), "stl");
        EXPECT_EQ(kindOf(goodStl(2, 2, "solid wall"), path), "stl");
        EXPECT_EQ(kindOf(goodStl(2000000, 300), path, FileExtent::Beginning), "stl");
    }
}

TEST(FileKind, TheNameDecidesWhereTheContentsDoNot) {
    EXPECT_EQ(kindOf("a text\n", "a.xml"), "xml");
    EXPECT_EQ(kindOf("a text\n", "a.obj"), "obj");
    EXPECT_EQ(kindOf("a text\n", "a.csv"), "a CSV file");
    EXPECT_EQ(kindOf("a text\n", "a.stl"), "a file that contains no STL");
    EXPECT_EQ(kindOf("a text\n", "a"), "a text of an unknown kind");
    EXPECT_EQ(kindOf(std::string(100, '\1'), "a"), "binary data of an unknown kind");
    EXPECT_EQ(kindOf(goodStl(5, 2), "a.stl"), "stl");
    EXPECT_EQ(kindOf(goodStl(5, 2), "a"), "binary data of an unknown kind");
    EXPECT_EQ(kindOf(std::string(60, '\0'), "a.stl"), "stl");
}

TEST(FileKind, OtherFormatsAreNamed) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"ply\nformat ascii 1.0\n", "a PLY mesh"},
        {"ply\r\nformat binary_little_endian 1.0\r\n" + std::string(300, '\1'), "a PLY mesh"},
        {"OFF\n3 1 0\n0 0 0\n", "an OFF mesh"},
        {"COFF 3 1 0\n", "an OFF mesh"},
        {"glTF\2\0\0\0"s, "a binary glTF file"},
        {"{\"asset\":{\"version\":\"2.0\"},\"meshes\":[]}", "a glTF file"},
        {"{\"command\":\"info\"}", "a JSON document"},
        {"[1, 2]", "a JSON document"},
        {"x,y,z\n1,2,3\n", "a CSV file"},
        {"x[m];y[m]\n1,5;2,5\n", "a CSV file"},
        {"1,2,3\n", "a CSV file"},
        {"1, 2, 3\n", "a CSV file"},
        {"x\ty\n1\t2\n", "a CSV file"},
        {"1\t2\t3\n", "a list of points without faces"},
        {"# points\n0.5 1.5 2.5\n1 2 3\n", "a list of points without faces"},
        {"# wall\nnewmtl white\nKd 1 1 1\n", "a material library"},
        {"%PDF-1.7\n", "a PDF document"},
        {"PK\3\4" + std::string(26, '\0') + "wall.obj", "a zip archive"},
        {"PK\3\4" + std::string(26, '\0') + "3D/3dmodel.model", "a 3MF mesh"},
        {"\x1F\x8B\x08"s, "a gzip archive"},
        {"\x89PNG\r\n\x1A\n"s, "a PNG picture"},
        {"\xFF\xD8\xFF\xE0"s, "a JPEG picture"},
        {"<!DOCTYPE html>\n<html>", "a web page"},
        {"<HTML><body>", "a web page"},
        {"<svg xmlns='http://www.w3.org/2000/svg'/>", "an SVG picture"},
        {"<?xml version='1.0'?>\n<COLLADA/>", "a COLLADA file"},
        {"\x7F" + "ELF\2\1\1"s, "an ELF program or library"},
        {"Kaydara FBX Binary  \0"s, "an FBX file"},
        {"; FBX 7.3.0 project file\n", "an FBX file"},
        {"  0\r\nSECTION\r\n", "a DXF file"},
        {"999\nmade by a program\n0\nSECTION\n", "a DXF file"},
        {"ISO-10303-21;\n", "a STEP file"},
        {"#!/bin/sh\n", "a script"},
        {"version https://git-lfs.github.com/spec/v1\noid sha256:1\n", "a pointer to a file in Git LFS"}};
    for (const auto& [bytes, name] : cases)
        for (const char* path : {"a", "a.obj", "a.stl"}) EXPECT_EQ(kindOf(bytes, path), name) << bytes;
}

TEST(FileKind, AProgramOfTheSizeOfAnStlFileIsNone) {
    std::string program = goodStl(40, 40);
    program.replace(0, 2, "MZ");
    EXPECT_EQ(kindOf(program, "a"), "stl");
    program.replace(0x3C, 4, "\x80\0\0\0"s);
    program.replace(0x80, 4, "PE\0\0"s);
    EXPECT_EQ(kindOf(program, "a.stl"), "a Windows program or library");
}

TEST(FileKind, RandomBytesAndIntegersAreNoStl) {
    for (int i = 0; i < seedCount(300); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        const auto randomBits = [&](int) {
            const auto bits = static_cast<std::uint32_t>(rng.integer(0, 65535)) << 16U |
                              static_cast<std::uint32_t>(rng.integer(0, 65535));
            float number = 0;
            std::memcpy(&number, &bits, sizeof number);
            return number;
        };
        const auto smallInteger = [&](int) {
            const std::int32_t integer = rng.integer(0, 1000);
            float number = 0;
            std::memcpy(&number, &integer, sizeof number);
            return number;
        };
        EXPECT_EQ(kindOf(binaryStl(20, 20, randomBits, "x"), "a.stl"), "a file that contains no STL");
        EXPECT_EQ(kindOf(binaryStl(20, 20, smallInteger, "x"), "a"), "binary data of an unknown kind");
    }
}

TEST(FileKind, SomeNumbersOfAnStlFileMayBeWrong) {
    const auto numberAt = [](int i) {
        return i % 12 == 5 ? std::nanf("") : i % 12 == 6 ? 1e-17F : static_cast<float>(i);
    };
    EXPECT_EQ(kindOf(binaryStl(5, 5, numberAt), "a"), "stl");
}

}  // namespace
}  // namespace quarn::test
