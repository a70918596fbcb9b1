#!/usr/bin/python3
"""Makes the sample reports 3139.txt, 3138.txt and 3137.txt of installation/.

The last two also hold the lines of the service bills, which have columns of their own; see service_reports.py.
Everything in them is invented. The generator is seeded: the same files come out of every run.
"""

import datetime
import pathlib
import random
import sys

import service_reports

HEAD = ["序号", "收货日期", "收货单号", "返修单号", "产品型号", "序列号", "处理方式", "客户名称", "联系人", "联系电话",
        "故障现象", "保修状态", "保修截止", "备注", "送修方式", "受理单号", "回执号", "受理日期", "送修人", "送修人电话", "收货地址",
        "邮编", "项目", "归档"]
ORDER_HEAD = ["序号", "下单日期", "返修单", "客户名称", "产品线", "台数", "归档", "运输方式", "运单号", "承运",
              "经办人", "返修号", "备注"]

# Product, the letters that its serial numbers begin with, the faults that it comes back with.
PRODUCTS = [
    ("接入交换机 YQ-S2326", "SA", ["24口中有6口不亮", "上电后反复重启", "端口丢包严重"]),
    ("汇聚交换机 YQ-S5348", "SB", ["堆叠口不通", "配置保存后丢失", "风扇告警"]),
    ("核心交换机 YQ-S9706", "SC", ["主备倒换失败", "无法启动，停在自检"]),
    ("企业路由器 YQ-R2640", "RA", ["广域口不通", "运行两小时后死机", "雷击后无法上电"]),
    ("骨干路由器 YQ-R8808", "RB", ["路由表装载失败", "时钟告警不消失"]),
    ("主控板 YQ-MPU8B", "MB", ["插入后不注册", "闪存读写错误"]),
    ("线路板 YQ-LPU48G", "LB", ["12至24口不通", "转发时有误码"]),
    ("电源模块 YQ-PW350A", "PA", ["无输出", "输出电压偏低", "有焦糊味"]),
    ("风扇框 YQ-FAN3C", "FA", ["一只风扇停转", "转速不可调，噪声大"]),
    ("光模块 YQ-SFP10KM", "OA", ["发光功率低", "收光无信号", "插入后不识别"]),
    ("光模块 YQ-XFP40KM", "OB", ["误码率高", "温度过高告警"]),
    ("无线接入点 YQ-AP6210", "WA", ["搜不到信号", "无法供电", "用户频繁掉线"]),
    ("防火墙 YQ-F1080", "GA", ["会话数上不去", "管理口不通"]),
]
CUSTOMERS = [
    ("江岭市教育信息中心", "白文静"), ("云澜通信南坪分公司", "顾长河"), ("临溪县人民医院信息科", "申屠晓"),
    ("北屏供电局调度中心", "唐若水"), ("青禾农业银行清算中心", "葛建业"), ("江岭轨道交通二号线", "祝一帆"),
    ("望海港务集团", "车海生"), ("松原大学网络中心", "季思远"), ("明珠广电网络公司", "陆小曼"),
    ("石桥区政务数据局", "欧阳平"), ("安和保险省分公司", "戚兰"), ("远航物流园", "屠立新"),
    ("东岭机场候机楼", "范玉成"), ("双河水务集团", "柳青"), ("金沙煤业信息部", "雷大勇"),
    ("晨光中学", "温雅"), ("沧浪酒店集团", "翁世杰"), ("新平县气象局", "宗铁军"),
    ("云澜通信北屏分公司", "闵慧"), ("江岭市图书馆", "卞书林"), ("长乐电视台", "查一鸣"), ("丰泽高速公路管理处", "丁守义"),
]
HANDLINGS = ["返厂维修", "备件更换", "报价后维修"]
UNORDERED = "待下返修单"

# Devices received and how many of them are out of warranty, receipt by receipt: both sides of each template's limit,
# a list with the added name, receipts without a docket, and every-day ones.
RECEIPTS = [
    (5, 3), (8, 6), (1, 1), (41, 34), (4, 0), (6, 5), (3, 3), (7, 4), (2, 1), (9, 8),
    (38, 33), (5, 5), (2, 0), (6, 2), (10, 7), (4, 3), (78, 69), (3, 1), (8, 8), (5, 4),
    (1, 0), (7, 6), (12, 9), (4, 4), (2, 2), (6, 3), (9, 5), (3, 2), (8, 4), (5, 1),
]
WITHOUT_ORDER = {7, 15, 27}
MIXED_ORDERS = {1, 9, 16, 22}


def serial_number(chance, prefix, day):
    return (f"{prefix}{day.year % 100 - chance.randint(1, 6):02d}"
            f"{chance.choice('ABCDEFGHJKLMNPQRSTUVWXYZ')}{chance.randrange(16**5):05X}{chance.choice('KRX')}")


def receipt_lines(chance, number, receipt, customer, orders, day, counts):
    """The lines of one receipt, without their running number; the ones out of warranty are spread among the others."""
    name, contact, phone = customer
    received, outside = counts
    flags = [True] * outside + [False] * (received - outside)
    chance.shuffle(flags)
    lines = []
    for position, is_outside in enumerate(flags):
        product, prefix, faults = chance.choice(PRODUCTS)
        until = day + datetime.timedelta(days=chance.randint(-900, -20) if is_outside else chance.randint(15, 700))
        order = orders[position * len(orders) // received]
        handling = UNORDERED if number in WITHOUT_ORDER else chance.choice(HANDLINGS if is_outside else HANDLINGS[:2])
        note = "外壳有磕碰" if chance.random() < 0.06 else "无"
        lines.append([day.isoformat(), receipt, "RMA" + order, product, serial_number(chance, prefix, day), handling,
                      name, contact, phone, chance.choice(faults), "保外" if is_outside else "保内",
                      until.isoformat(), note])
    return lines


def delivery_fields(chance, number, customer, day):
    """How a receipt came in, which every line of it tells."""
    name, contact, phone = customer
    return [chance.choice(["快递", "客户自送", "工程师带回"]), f"SL{day:%y%m%d}-{number + 1:02d}", f"HZ{number + 1:04d}",
            day.isoformat(), contact, phone, f"{name}收发室", f"{chance.randrange(210000, 240000)}", "年度维保",
            f"{day:%Y.%m} {name}"]


def order_line(chance, order, return_number, customer, day, count):
    clerk = chance.choice(["程晓", "池春", "施敏"])
    carrier, way = chance.choice([("顺达", "陆运"), ("飞骏", "空运"), ("中腾", "陆运")])
    return [day.isoformat(), order, customer[0], "数据通信", str(count), f"{day.year}.{day.month:02d} {customer[0]}",
            way, f"{carrier[0]}{chance.randrange(10**8):08d}", carrier, clerk, return_number, "无"]


def make_reports():
    """The rows of the three reports, heads first."""
    chance, delivery_chance = random.Random(3139), random.Random(3140)
    devices, orders = [], []
    day = datetime.date(2024, 3, 4)
    customers = [(name, contact, f"138-0000-{chance.randrange(1000, 10000)}") for name, contact in CUSTOMERS]
    order_number = 61030420
    for number, counts in enumerate(RECEIPTS):
        day += datetime.timedelta(days=chance.choice([0, 1, 1, 2]))
        customer = customers[number % len(customers)]
        receipt = f"4900{318200 + number * 7 + chance.randrange(7)}"
        keys = []
        for _ in range(2 if number in MIXED_ORDERS else 1):
            order_number += chance.randint(3, 19)
            keys.append(str(order_number))
        delivery = delivery_fields(delivery_chance, number, customer, day)
        devices += [line + delivery for line in receipt_lines(chance, number, receipt, customer, keys, day, counts)]
        if number not in WITHOUT_ORDER:
            for key in keys:
                return_number = f"81{day:%y%m%d}-{len(orders) + 1:03d}"
                orders.append(order_line(chance, key, return_number, customer, day, counts[0]))
    everything = [[str(index + 1), *line] for index, line in enumerate(devices)]
    outside = [line for line in everything if line[11] == "保外"]
    listed = [[str(index + 1), *line] for index, line in enumerate(orders)]
    return {"3139.txt": [HEAD, *everything], "3138.txt": [HEAD, *outside], "3137.txt": [ORDER_HEAD, *listed]}


def check(reports):
    """A scan looks for its key anywhere in a line, so a key may stand nowhere but in its own field."""
    for name, rows in reports.items():
        lines = ["\t".join(row) for row in rows]
        assert max(map(len, lines)) < 700
        assert len({len(row) for row in rows}) == 1 and all(all(row) for row in rows)
        field, start = (2, 0) if name == "3137.txt" else (2, 4)
        assert name == "3137.txt" or [("4900" in line) for line in lines] == [False] + [True] * (len(lines) - 1)
        keys = {row[field] for row in rows[1:]}
        for key in keys | ({row[3][3:] for row in reports["3139.txt"][1:]} if name == "3137.txt" else set()):
            assert len(key) > start
            assert [key in line for line in lines] == [row[field] == key for row in rows], (name, key)


def add_service_lines(reports):
    """The dockets and the bills share files, so no key of one may stand in a line of the other."""
    services = service_reports.make_reports()
    keys = {row[2] for name in reports for row in reports[name][1:]} | {row[3][3:] for row in reports["3139.txt"][1:]}
    lines = {name: ["\t".join(row) for row in reports[name]] for name in reports}
    for name in ("3138.txt", "3137.txt"):
        added = ["\t".join(row) for row in services[name]]
        assert not any(key in line for key in keys for line in added)
        assert not any(bill[14] in line for bill in services["3138.txt"] for line in lines[name])
        assert not any(service_reports.OWN in line for line in lines[name])
        reports[name] += services[name]


def main(folder):
    reports = make_reports()
    check(reports)
    add_service_lines(reports)
    for name, rows in reports.items():
        service_reports.write(folder, name, rows)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
