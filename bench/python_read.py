#!/usr/bin/python3
"""Reading a large model into Python against the C++ read alone.

    /usr/bin/python3 bench/python_read.py [--model FILE | --generate MB] [--build DIR] [--repeats N]

--model FILE    the model to read (.lp, .mps, .opt, optionally .gz)
--generate MB   write a random free-MPS model of about MB megabytes (default 100) into a
                temporary folder and read that
--build DIR     a Release build with -DLPCONV_BENCH=ON -DLPCONV_PYTHON=ON (default build/bench-py;
                configured and built when it does not exist)

Prints the best of N times (default 3) of: the C++ read (bench/read_model_benchmark), lpconv.read,
lpconv.read plus Model.csr() (the numpy arrays), and the cost per value of CSR.values(), which makes
one Python object per nonzero. Target: read plus csr at most 1.5 x the C++ read. Exit status 0 when
it is met, 3 when it is missed, 1 when a step failed.
"""

import argparse
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent


def generate(path, megabytes, seed=1):
    """A random LP in free MPS: rows of about 10 entries, values short decimals and integers."""
    rng = random.Random(seed)
    columns = max(10, megabytes * 4000)
    rows = max(10, columns // 2)
    values = ["1", "-1", "2.5", "0.125", "-3", "17", "1e-3", "0.3333", "12.75", "-0.5"]
    with open(path, "w") as out:
        out.write(f"NAME generated\nROWS\n N obj\n")
        out.writelines(f" L r{i}\n" for i in range(rows))
        out.write("COLUMNS\n")
        for j in range(columns):
            out.write(f" x{j} obj {rng.choice(values)}\n")
            picks = sorted(rng.sample(range(rows), 20))
            out.writelines(f" x{j} r{i} {rng.choice(values)}\n" for i in picks)
        out.write("RHS\n")
        out.writelines(f" rhs r{i} {rng.randint(1, 1000)}\n" for i in range(rows))
        out.write("BOUNDS\n")
        out.writelines(f" UP bnd x{j} {rng.randint(1, 100)}\n" for j in range(0, columns, 3))
        out.write("ENDATA\n")


def ensure_build(build):
    if not (build / "bench" / "read_model_benchmark").exists():
        env = dict(os.environ, CCACHE_BASEDIR="/work", CCACHE_NOHASHDIR="1")
        subprocess.run(["cmake", "-S", str(ROOT), "-B", str(build), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                        "-DLPCONV_BENCH=ON", "-DLPCONV_PYTHON=ON", "-DBUILD_TESTING=OFF"], check=True, env=env,
                       stdout=subprocess.DEVNULL)
        subprocess.run(["cmake", "--build", str(build), "--target", "read_model_benchmark", "lpconv_python_core"],
                       check=True, env=env)


def best_of(repeats, work):
    """The least wall time and the least processor time of `repeats` runs of work()."""
    best, best_cpu = float("inf"), float("inf")
    for _ in range(repeats):
        start, start_cpu = time.perf_counter(), time.process_time()
        result = work()
        best_cpu = min(best_cpu, time.process_time() - start_cpu)
        best = min(best, time.perf_counter() - start)
        del result
    return best, best_cpu


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--model")
    parser.add_argument("--generate", type=int, default=100)
    parser.add_argument("--build", default=str(ROOT / "build" / "bench-py"))
    parser.add_argument("--repeats", type=int, default=3)
    args = parser.parse_args()
    build = pathlib.Path(args.build)
    ensure_build(build)
    sys.path.insert(0, str(build / "python"))
    import lpconv

    with tempfile.TemporaryDirectory() as folder:
        model_path = args.model
        if model_path is None:
            model_path = os.path.join(folder, "generated.mps")
            generate(model_path, args.generate)
        size = os.path.getsize(model_path) / 1e6
        cxx = subprocess.run([str(build / "bench" / "read_model_benchmark"), model_path, str(args.repeats)],
                             check=True, capture_output=True, text=True).stdout.split()
        cxx_seconds, cxx_cpu = float(cxx[1]), float(cxx[3])
        read_seconds = best_of(args.repeats, lambda: lpconv.read(model_path))
        both_seconds = best_of(args.repeats, lambda: lpconv.read(model_path).csr())
        model = lpconv.read(model_path)
        csr = model.csr()
        nonzeros = model.num_nonzeros
        values_seconds = best_of(args.repeats, csr.values)
        sample = csr.values()
        fractions = sum(1 for v in sample if type(v) is not int)
        del sample

    ratio = both_seconds[0] / cxx_seconds
    ratio_cpu = both_seconds[1] / cxx_cpu
    per_value = [t / max(nonzeros, 1) * 1e9 for t in values_seconds]
    print(f"model            {size:.1f} MB, {model.num_rows} rows, {model.num_columns} columns, {nonzeros} nonzeros")
    print("                 wall s   cpu s")
    print(f"C++ read         {cxx_seconds:7.3f} {cxx_cpu:7.3f}")
    print(f"lpconv.read      {read_seconds[0]:7.3f} {read_seconds[1]:7.3f}")
    print(f"read + csr()     {both_seconds[0]:7.3f} {both_seconds[1]:7.3f}   = {ratio:.2f} x the C++ read "
          f"(cpu {ratio_cpu:.2f} x; target <= 1.5)")
    print(f"CSR.values()     {values_seconds[0]:7.3f} {values_seconds[1]:7.3f}   = {per_value[0]:.0f} ns per value "
          f"(cpu {per_value[1]:.0f} ns; {fractions} Fractions, {nonzeros - fractions} ints)")
    return 0 if max(ratio, ratio_cpu) <= 1.5 else 3


if __name__ == "__main__":
    sys.exit(main())
