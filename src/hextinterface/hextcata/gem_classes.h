// The translators, one class for each kind of catalogue primitive. All computing happens in the constructor.
#pragma once

#include "hextinterface/hextcata/gem_trans.h"

namespace gem {

inline constexpr int writeMode = 2;
inline constexpr TlGeTol looseTol(0.001, 0.001);
// How far out of a coordinate plane a direction may point and still count as lying in it.
inline constexpr double planeTolerance = 1e-5;
inline constexpr const char* noCounterpart = "has no counterpart in the catalogue";

}  // namespace gem

class HEXT_CATA_SSLCTrans final : public HEXT_CATA_GemTrans {
public:
    HEXT_CATA_SSLCTrans(const HextScylinder3D& primitive, const GemFrame& frame, int nextNumber);
    void write(CataStream& out, const char* failure) const override { writeOne(out, object_, failure); }

private:
    HEXT_CATA_SSLC object_;
};

class HEXT_CATA_SCYLTrans final : public HEXT_CATA_GemTrans {
public:
    HEXT_CATA_SCYLTrans(const HextCylinder3D& primitive, const GemFrame& frame, int nextNumber);
    void translateAt(const HxGePoint3D& base, bool useWords) override;
    void write(CataStream& out, const char* failure) const override { writeOne(out, object_, failure); }

private:
    HxGePoint3D near_;
    HxGePoint3D far_;
    double diameter_;
    HEXT_CATA_SCYLE object_;
};

// A bend that may be cut in two: the main piece and the extra one before it.
struct BendCourse;

class HEXT_CATA_TORUSTrans : public HEXT_CATA_GemTrans {
public:
    HEXT_CATA_TORUSTrans(const HextTorus3D& primitive, const GemFrame& frame, int nextNumber);
    void write(CataStream& out, const char* failure) const override { writeTwo(out, extra_, main_, failure); }

protected:
    HEXT_CATA_TORUSTrans(const BendCourse& course, double diameter, const GemFrame& frame, int nextNumber);
    HEXT_CATA_TORUS main_;
    HEXT_CATA_TORUS extra_;

private:
    void fill(const BendCourse& course, double diameter);
};

class HEXT_CATA_TORUSTrans1 final : public HEXT_CATA_TORUSTrans {
public:
    HEXT_CATA_TORUSTrans1(const HextTorus3D& primitive, const GemFrame& frame, int nextNumber);
    void write(CataStream& out, const char* failure) const override { writeTwo(out, main_, extra_, failure); }
};

class HEXT_CATA_SRTOTrans final : public HEXT_CATA_GemTrans {
public:
    HEXT_CATA_SRTOTrans(const HextSqutorus3D& primitive, const GemFrame& frame, int nextNumber);
    void write(CataStream& out, const char* failure) const override { writeTwo(out, main_, extra_, failure); }

private:
    HEXT_CATA_SRTO main_;
    HEXT_CATA_SRTO extra_;
};

class HEXT_CATA_LSNOTrans final : public HEXT_CATA_GemTrans {
public:
    HEXT_CATA_LSNOTrans(const HextConcone3D& primitive, const GemFrame& frame, int nextNumber);
    HEXT_CATA_LSNOTrans(const HextEcone3D& primitive, const GemFrame& frame, int nextNumber);
    void write(CataStream& out, const char* failure) const override { writeOne(out, object_, failure); }

private:
    HEXT_CATA_LSNO object_;
};

class HEXT_CATA_BOXSTrans final : public HEXT_CATA_GemTrans {
public:
    HEXT_CATA_BOXSTrans(const HextBox3D& primitive, const GemFrame& frame, int nextNumber);
    void write(CataStream& out, const char* failure) const override;

private:
    HEXT_CATA_SEXT extrusion_;
    HEXT_CATA_Box box_;
};

class HEXT_CATA_SSPHTrans final : public HEXT_CATA_GemTrans {
public:
    HEXT_CATA_SSPHTrans(const HextSphere3D& primitive, const GemFrame& frame, int nextNumber);
    void write(CataStream& out, const char* failure) const override { writeOne(out, object_, failure); }

private:
    HEXT_CATA_SSPH object_;
};

class HEXT_CATA_SEXTTrans final : public HEXT_CATA_GemTrans {
public:
    HEXT_CATA_SEXTTrans(const HextWedge3D& primitive, const GemFrame& frame, int nextNumber);
    HEXT_CATA_SEXTTrans(const HextPrism3D& primitive, const GemFrame& frame, int nextNumber);
    HEXT_CATA_SEXTTrans(const HextSaddle3D& primitive, const GemFrame& frame, int nextNumber);
    void write(CataStream& out, const char* failure) const override;

private:
    HEXT_CATA_SEXT object_;
};

class HEXT_CATA_SDSHTrans final : public HEXT_CATA_GemTrans {
public:
    HEXT_CATA_SDSHTrans(const HextOval3D& primitive, const GemFrame& frame, int nextNumber);
    void write(CataStream& out, const char* failure) const override { writeOne(out, object_, failure); }

private:
    HEXT_CATA_SDSH object_;
};

class HEXT_CATA_LPYRTrans final : public HEXT_CATA_GemTrans {
public:
    HEXT_CATA_LPYRTrans(const HextSqucone3D& primitive, const GemFrame& frame, int nextNumber);
    void write(CataStream& out, const char* failure) const override { writeOne(out, object_, failure); }

private:
    HEXT_CATA_LPYR object_;
};

// Raises when one of its two objects is not valid, after writing the other.
class HEXT_CATA_SQUCIRTrans final : public HEXT_CATA_GemTrans {
public:
    HEXT_CATA_SQUCIRTrans(const HextSqucir3D& primitive, const GemFrame& frame, int nextNumber);
    void write(CataStream& out, const char* failure) const override;

private:
    HEXT_CATA_LPYR pyramid_;
    HEXT_CATA_LSNO snout_;
};

class HEXT_CATA_LINETrans final : public HEXT_CATA_GemTrans {
public:
    HEXT_CATA_LINETrans(const HextPrimaryLine& primitive, const GemFrame& frame, int nextNumber);
    void write(CataStream& out, const char* failure) const override { writeOne(out, object_, failure); }

private:
    HEXT_CATA_LINE object_;
};
