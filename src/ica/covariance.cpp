#include "ica/covariance.h"

#include "host/host_api.h"
#include "host/log.h"
#include "ica/eigenvalue_file.h"
#include "ica/jacobi/jacobi.h"
#include "ica/jacobi/sort_eigenpairs.h"
#include "numeric/elapsed_time.h"
#include "output/file_beside_vtc.h"
#include "output/text_matrix.h"

namespace zn {

OffsetMatrix<double> computeCovariance(const double* x, int voxels, int volumes) {
    host().znLogText("// Plugin>  Computing covariance matrix of data...");
    const ElapsedTime time;
    ZeroedBlock product(volumes, volumes);
    OffsetMatrix<double> covariance(1, volumes, 1, volumes);
    host().znUpdateActiveWindow();

    products().zn_intel_matrix_matrix_mult_d(x, x, product.get(), volumes, volumes, voxels, true, false);
    for (int i = 1; i <= volumes; ++i) {
        for (int j = i; j <= volumes; ++j) {
            covariance[i][j] = covariance[j][i] = product.row(i - 1)[j - 1] / voxels;
        }
    }
    product.release();
    logLine("// Plugin>  Covariance matrix computed (elapsed time: %i secs)", time.seconds());
    host().znUpdateActiveWindow();
    return covariance;
}

Eigenpairs decomposeCovariance(OffsetMatrix<double>& covariance, int volumes, const char* vtcFile) {
    host().znLogText("// Plugin>  Computing eigenvalues and eigenvectors of the covariance matrix...");
    writeDoubleMatrix("Covariance.txt", covariance.get(), volumes, volumes); // before it is overwritten

    Eigenpairs eigen{OffsetVector<double>(1, volumes), OffsetMatrix<double>(1, volumes, 1, volumes)};
    int rotations = 0;
    jacobi(covariance.get(), volumes, eigen.values.get(), eigen.vectors.get(), &rotations);
    sortEigenpairs(eigen.values.get(), eigen.vectors.get(), volumes);
    covariance.release();

    host().znLogText("// Plugin>  Saving eigenvalues and eigenvectors of the covariance matrix...");
    writeEigenvalueFile(fileBesideVtc(vtcFile, ".eig").c_str(), eigen.values.get(), eigen.vectors.get(), volumes);
    host().znUpdateActiveWindow();
    return eigen;
}

} // namespace zn
