#!/usr/bin/python3
"""The sample lines of the service bills and of the reports on devices beyond repair: 3158.txt, 3160.txt, and the lines
that 3138.txt and 3137.txt hold beside those of the dockets.

Everything in them is invented. The generator is seeded: the same files come out of every run.
"""

import datetime
import pathlib
import random
import sys

OWN, BEYOND = "自制品", "不可修复"  # what the commands look for

HEAD = ["序号", "报修日期", "联系人", "联系电话", "客户名称", "区域", "收货地址", "服务类别", "产品名称", "产品型号", "安装位置", "工程名称",
        "产品来源", "服务单号", "设备序列号", "产品条码", "报修渠道", "受理时间", "受理人", "发运方式", "包装情况", "归档批次", "保修批次",
        "保修截止", "故障级别", "上电情况", "外观", "检测人", "检测工程师", "故障现象", "检测过程", "维修结论", "检测结果", "处理意见", "软件版本",
        "质检"]
LIST_HEAD = ["序号", "送修日期", "运单号", "联系人", "联系电话", "客户名称", "区域", "收货地址", "服务类别", "包装情况", "产品型号", "产品来源",
             "工程名称", "受理人", "送修批号", "产品条码", "报修渠道", "受理时间", "保修截止", "发运方式", "故障级别", "归档批次", "上电情况",
             "外观", "软件版本", "检测人", "检测工程师", "复核人", "质检", "故障现象", "检测结果", "更换器件", "初检结果"]

# Name, model, letters of the serial number, fault, finding, conclusion
DEVICES = [
    ("环境监测主机", "YQ-EM300", "HJ", "上电后指示灯全灭", "电源输入保险烧断，整流桥击穿", "更换电源组件"),
    ("环境监测主机", "YQ-EM300", "HJ", "温度读数偏高十度以上", "采样基准漂移", "校准并更换基准源"),
    ("串口服务器", "YQ-NS16A", "CK", "第5至第8口无数据", "接口芯片损坏", "更换接口芯片"),
    ("串口服务器", "YQ-NS16A", "CK", "运行数小时后重启", "电解电容鼓包", "更换电容"),
    ("光电收发器", "YQ-OE1G", "GD", "光口不亮", "激光器老化", "更换光组件"),
    ("时间同步装置", "YQ-TS20", "SJ", "守时误差超标", "晶振老化", "更换恒温晶振"),
    ("配电监测单元", "YQ-PM12", "PD", "电流读数为零", "互感器接线开路", "重接并加固"),
    ("报警转发器", "YQ-AL8", "BJ", "短信发不出", "无线模块失效", "更换无线模块"),
]
LOSSES = [
    ("主板进水腐蚀，多层线路断裂", "线路板大面积腐蚀，内层断线无法修补，已无维修价值"),
    ("雷击后多处元件烧毁", "电源、主控、接口三处同时烧毁，线路板碳化，无法修复"),
    ("坠落后机壳与线路板断裂", "线路板断为两截，元件停产，无法修复"),
]
CUSTOMERS = [
    ("江岭市教育信息中心", "白文静", "江岭", "江岭市学府路18号信息楼"), ("云澜通信南坪分公司", "顾长河", "南坪", "南坪区观澜街77号"),
    ("临溪县人民医院", "申屠晓", "临溪", "临溪县康宁路5号"), ("北屏供电局调度中心", "唐若水", "北屏", "北屏市电力大厦9层"),
    ("望海港务集团", "车海生", "望海", "望海港2号码头值班楼"), ("石桥区政务数据局", "欧阳平", "石桥", "石桥区政和路1号"),
    ("双河水务集团", "柳青", "双河", "双河市临江道33号"), ("东岭机场候机楼", "范玉成", "东岭", "东岭机场航站楼机房"),
]
DELIVERIES = ["交包发", "批次", "交物流", "客户自提"]
CLERKS, TESTERS, ENGINEERS = ["程晓", "池春", "施敏"], ["卜一凡", "阮静"], ["骆成林", "苗启东"]


def phone(chance):
    mobile, fixed = f"139{chance.randrange(10**8):08d}", f"0{chance.randint(510, 799)}-8{chance.randrange(10**6):06d}"
    return chance.choice([mobile, f"{mobile}/{fixed}", f"{fixed}/{mobile}"])


def serial_number(chance, prefix, number):
    return f"{prefix}{chance.randint(12, 23)}{chance.choice('ABCDEFGH')}{number:04d}{chance.choice('KRX')}"


def bar_code(chance, model):
    """Its characters 7 and 8 tell the year of make, which decides on the warranty."""
    letters = "".join(filter(str.isalpha, model))[-2:].ljust(2, "X")
    return f"21Q{letters}-{chance.choice([9, 11, 12, 13, 14, 15, 16, 18]):02d}{chance.choice('ABCK')}{chance.randrange(10**5):05d}"


def service_lines(chance, count, first, day, sources):
    """Lines of HEAD's columns; `sources` tells where each device comes from, "beyond" added where it cannot be mended."""
    lines = []
    for place in range(count):
        own, beyond = sources[place % len(sources)]
        name, model, prefix, fault, finding, conclusion = chance.choice(DEVICES)
        customer, contact, region, address = chance.choice(CUSTOMERS)
        day += datetime.timedelta(days=chance.choice([0, 0, 1]))
        if beyond:
            fault, finding = chance.choice(LOSSES)
            conclusion = "报废"
        number = first + place
        lines.append([
            str(place + 1), day.isoformat(), contact, phone(chance), customer, region, address, "保外维修", name, model,
            f"{chance.randint(1, 6)}号机柜", "网络改造", OWN if own else "外购品", f"fw{day:%Y.%m}-{number:04d}",
            serial_number(chance, prefix, number), bar_code(chance, model), chance.choice(["热线", "传真", "网站"]),
            f"{day:%Y.%m.%d} {chance.randint(8, 17):02d}:{chance.randrange(60):02d}", chance.choice(CLERKS),
            chance.choice(DELIVERIES), "完好", f"{day:%Y.%m} 第{1 + day.day // 16}批", "无", "2023-12-31",
            chance.choice(["一般", "严重"]), "已上电", chance.choice(["完好", "有划痕"]), chance.choice(TESTERS),
            chance.choice(ENGINEERS), fault, "目检、上电、业务测试", conclusion, finding, BEYOND if beyond else "已修复",
            f"v{chance.randint(1, 5)}.{chance.randint(0, 9)}.{chance.randint(10, 99)}", "合格"])
    return lines


def order_line(number, device):
    """The line of 3137.txt for a device: 15 names the order, 23 the folder, 35 and 37 are the codes of both deliveries."""
    line = ["无"] * 37
    line[0], line[1], line[3] = str(number), device[1], device[4]
    line[14], line[15] = f"fx{device[13][2:].replace('.', '')}", device[14]
    line[22] = f"{device[21]} {device[4]}"
    line[34], line[36] = f"out-{device[15][-8:]}", f"in-{device[15][-8:]}"
    return line


def list_lines(chance, batches):
    """Lines of 3160.txt: one batch for each number in `batches`, with that many devices."""
    lines, day = [], datetime.date(2024, 4, 8)
    for number, count in enumerate(batches):
        customer, contact, region, address = CUSTOMERS[number % len(CUSTOMERS)]
        telephone = phone(chance)
        day += datetime.timedelta(days=3)
        for _ in range(count):
            _, model, _, fault, finding, conclusion = chance.choice(DEVICES)
            replaced = conclusion[2:] if conclusion.startswith("更换") else ""
            lines.append([
                str(len(lines) + 1), day.isoformat(), f"顺{60210000 + number}", contact, telephone, customer, region, address,
                "保外维修", "完好", model, OWN, "网络改造", chance.choice(CLERKS), f"sx{day:%y%m%d}-{number + 1:02d}",
                bar_code(chance, model), "热线", f"{day:%Y.%m.%d} 09:30", "2023-12-31", chance.choice(DELIVERIES), "一般",
                f"{day:%Y.%m} 第{1 + day.day // 16}批", "已上电", "完好", "v2.1.15", chance.choice(TESTERS),
                chance.choice(ENGINEERS), "骆成林", "合格", fault, "" if chance.random() < 0.3 else finding, replaced,
                f"初检：{fault}"])
    return lines


def make_reports():
    """The rows of 3158.txt and 3160.txt, heads first, and the lines for 3138.txt and 3137.txt."""
    chance = random.Random(3158)
    bills = service_lines(chance, 12, 301, datetime.date(2024, 3, 6), [(True, False)])
    devices = service_lines(chance, 26, 401, datetime.date(2024, 4, 2),
                            [(True, False), (True, True), (False, False), (True, False), (False, True)])
    return {"3158.txt": [HEAD, *devices], "3160.txt": [LIST_HEAD, *list_lines(chance, [6, 1, 14, 3, 46, 9])],
            "3138.txt": bills, "3137.txt": [order_line(number + 1, bill) for number, bill in enumerate(bills)]}


def check(reports):
    """A scan looks for its key anywhere in a line, so a key may stand nowhere but in its own field."""
    for rows in reports.values():
        lines = ["\t".join(row).lower() for row in rows]
        assert max(map(len, lines)) < 700 and len({len(row) for row in rows}) == 1
        assert not any("4900" in line for line in lines)
    for name, key in (("3138.txt", 14), ("3158.txt", 14), ("3160.txt", 14)):
        lines = ["\t".join(row).lower() for row in reports[name]]
        for value in {row[key].lower() for row in reports[name] if row[0] != "序号"}:
            assert [value in line for line in lines] == [row[key].lower() == value for row in reports[name]], value
    for bill in reports["3138.txt"]:
        assert sum(bill[14] in row for row in reports["3137.txt"]) == 1


def write(folder, name, rows):
    text = "".join("\t".join(row) + "\r\n" for row in rows)
    (folder / name).write_bytes(text.encode("gbk"))


def main(folder):
    reports = make_reports()
    check(reports)
    for name in ("3158.txt", "3160.txt"):
        write(folder, name, reports[name])


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
