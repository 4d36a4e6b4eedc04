#include "tolmar/brep.h"

namespace {

TlGePoint3d nodePoint(const tolmar::TriangleMesh& mesh, std::uint32_t node) {
    const double* p = mesh.nodes.data() + 3 * std::size_t{node};
    return {p[0], p[1], p[2]};
}

}  // namespace

TlBr::ErrorStatus TlBrNode::getPoint(TlGePoint3d& point) const {
    if (mesh_ == nullptr) {
        return TlBr::eUninitialisedObject;
    }
    point = nodePoint(*mesh_, index_);
    return TlBr::eOk;
}

TlBr::ErrorStatus TlBrElement2d::getNormal(TlGeVector3d& normal) const {
    if (mesh_ == nullptr) {
        return TlBr::eUninitialisedObject;
    }
    const std::uint32_t* corner = mesh_->triangles.data() + 3 * index_;
    const TlGePoint3d a = nodePoint(*mesh_, corner[0]);
    const TlGeVector3d across = (nodePoint(*mesh_, corner[1]) - a).crossProduct(nodePoint(*mesh_, corner[2]) - a);
    normal = across / across.length();
    return TlBr::eOk;
}

TlBr::ErrorStatus TlBrMesh2dElement2dTraverser::setMesh(const TlBrMesh2d& mesh) {
    mesh_ = &mesh.mesh();
    index_ = 0;
    return TlBr::eOk;
}

TlBr::ErrorStatus TlBrMesh2dElement2dTraverser::next() {
    if (done()) {
        return TlBr::eOutOfRange;
    }
    ++index_;
    return TlBr::eOk;
}

TlBr::ErrorStatus TlBrMesh2dElement2dTraverser::getElement(TlBrElement2d& element) const {
    if (done()) {
        return TlBr::eOutOfRange;
    }
    element.mesh_ = mesh_;
    element.index_ = index_;
    return TlBr::eOk;
}

TlBr::ErrorStatus TlBrElement2dNodeTraverser::setElement(const TlBrElement2d& element) {
    mesh_ = element.mesh_;
    element_ = element.index_;
    corner_ = 0;
    return mesh_ != nullptr ? TlBr::eOk : TlBr::eUninitialisedObject;
}

TlBr::ErrorStatus TlBrElement2dNodeTraverser::next() {
    if (done()) {
        return TlBr::eOutOfRange;
    }
    ++corner_;
    return TlBr::eOk;
}

TlBr::ErrorStatus TlBrElement2dNodeTraverser::getNode(TlBrNode& node) const {
    if (done()) {
        return TlBr::eOutOfRange;
    }
    node.mesh_ = mesh_;
    node.index_ = mesh_->triangles[3 * element_ + static_cast<std::size_t>(corner_)];
    return TlBr::eOk;
}
