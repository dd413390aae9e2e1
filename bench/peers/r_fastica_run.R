# r_fastica_run.R VOXELS VOLUMES COMPONENTS SEED DATA MAPS
#
# R's fastICA in its deflation form on the data of engine_run, by its C method, the faster one. Its test of convergence
# is scikit-learn's. It prints a line for every component, from which the caller counts and times the updates.
suppressMessages(library(fastICA))

statusBytes <- function(key) {
    line <- grep(paste0("^", key, ":"), readLines("/proc/self/status"), value = TRUE)
    as.numeric(strsplit(trimws(sub(".*:", "", line)), " ")[[1]][1]) * 1024
}

arguments <- commandArgs(trailingOnly = TRUE)
sizes <- as.integer(arguments[1:4])
voxels <- sizes[1]
volumes <- sizes[2]
components <- sizes[3]
set.seed(sizes[4])
data <- t(matrix(readBin(arguments[5], "double", as.double(voxels) * volumes), nrow = volumes))
invisible(gc())

held <- statusBytes("VmRSS")
cat("5", file = "/proc/self/clear_refs")
clock <- proc.time()
ica <- fastICA(data, components, alg.typ = "deflation", fun = "logcosh", alpha = 1, method = "C",
               maxit = 1000, tol = 1e-4^2 / 2, verbose = TRUE)
taken <- proc.time() - clock
beyond <- statusBytes("VmHWM") - held

writeBin(as.vector(ica$S), arguments[6], size = 4)
cat(sprintf('\n{"seconds": %.6f, "processor_seconds": %.6f, "bytes_beyond_data": %.0f, "found": %d}\n',
            taken[["elapsed"]], taken[["user.self"]] + taken[["sys.self"]], beyond, components))
