#!/usr/bin/python3
"""A large tab-delimited report in GBK for the column benchmarks.

    columns_generate.py FILE SEED [LINES]

300,000 lines of 20 columns unless told otherwise, some 66 MB. Every line holds "4900"; two in a hundred are copies of an
earlier one; column 5 is a device number of one to eight digits, with some 5,000 different values. Letters are small, so
that tools that know no GBK count the same texts.
"""

import random
import sys

MODELS = ["传输板卡", "电源模块", "光接口板", "主控单元", "风扇框", "时钟板"]
PLACES = ["深圳维修中心", "西安备件库", "成都返修组", "上海客户支持部", "北京二线"]
STATES = ["自制品", "外购件", "不可修复", "待检", "已发货"]


def line(number, rng):
    day = f"20{rng.randrange(10, 20)}-{rng.randrange(1, 13):02}-{rng.randrange(1, 29):02}"
    fields = [
        f"r{number:07}", rng.choice(PLACES), f"4900{rng.randrange(1000000):06}", rng.choice(MODELS) + f"z{number % 97}",
        str(rng.randrange(10 ** rng.randrange(1, 5)) * 7 ** (number % 5)), day, rng.choice(STATES), f"sn{rng.getrandbits(40):010x}",
        f"{rng.randrange(100000) / 100:.2f}", "", "接口无输出，更换器件后测试正常", f"op{rng.randrange(400):03}",
        day.replace("-", "."), f"box {rng.randrange(9000)}", rng.choice(PLACES) + "第" + str(rng.randrange(40)) + "号",
        f"{rng.getrandbits(64):016x}", "", "ok" if number % 3 else "again", f"{rng.randrange(10 ** 6)}/{rng.randrange(90)}",
        f"remark {rng.randrange(10 ** 8):08} {'abcdefghij' * 4}"]
    return "\t".join(fields)


def write(path, seed, lines=300000):
    rng = random.Random(seed)
    recent = []
    with open(path, "wb") as file:
        for number in range(lines):
            if recent and rng.randrange(50) == 0:
                text = rng.choice(recent)
            else:
                text = line(number, rng)
                recent = (recent + [text])[-100:]
            file.write(text.encode("gbk") + b"\r\n")


if __name__ == "__main__":
    write(sys.argv[1], *map(int, sys.argv[2:4]))
